// Rewrites the golden scripts of JSON loads with what is written now: approve_golden DIRECTORY.
// Names every script that has changed. Read the changes before they are committed: scenes depend on
// every byte of a script.

#include <fstream>
#include <iostream>

#include "tests/readers/json/golden_cases.h"
#include "tests/readers/json/read.h"

int main(int count, char** arguments) {
    if (count != 2) {
        std::cerr << "usage: json_approve_golden DIRECTORY\n";
        return 2;
    }
    for (const intake::GoldenCase& golden : intake::goldenCases(arguments[1])) {
        const intake::Outcome outcome = intake::read(golden.source, golden.request);
        if (!outcome.success) {
            std::cerr << golden.name << ": " << outcome.error << '\n';
            return 1;
        }
        if (outcome.script != intake::contentOf(golden.scriptFile)) {
            std::ofstream(golden.scriptFile, std::ios::binary) << outcome.script;
            std::cout << golden.scriptFile.string() << '\n';
        }
    }
}
