#include "tests/faults/MemoryFaults.h"

#include <algorithm>
#include <array>
#include <sstream>
#include <utility>

#include "tests/faults/ChildFindings.h"
#include "tests/faults/extent.h"

namespace intake {

namespace {

/// What libraries do wrong when they get no memory, and we cannot help.
struct KnownFault {
    const char* what;
    const char* where;
};
constexpr std::array<KnownFault, 7> KNOWN_FAULTS{{
    {"crashes", "xmlXPathCompiledEval"},      // libxml2: uses a context that it could not make
    {"ended by", "libxml_domnode_tim_sort"},  // libxml2: ends the process where it cannot sort
    {"lost", "xmlXPathCompiledEval"},         // libxml2: sets of nodes that were being filled
    {"lost", "xmlXPathCtxtCompile"},          // libxml2: steps of the expression
    {"crashes", "SQLDriverConnect"},          // unixODBC: copies texts to where there is no room
    {"lost", "SQLDriverConnect"},             // SQLite's ODBC driver: the database that it opened
    {"shown as success", "SQLExecDirect"},    // SQLite's ODBC driver: the types of columns
}};

bool isKnown(const std::string& line) {
    return std::any_of(KNOWN_FAULTS.begin(), KNOWN_FAULTS.end(), [&](const KnownFault& fault) {
        return line.find(fault.what) != std::string::npos &&
               line.find(fault.where) != std::string::npos;
    });
}

std::string withoutKnown(const std::string& lines) {
    std::istringstream in(lines);
    std::string rest;
    for (std::string line; std::getline(in, line);) {
        rest += isKnown(line) ? "" : line + "\n";
    }
    return rest;
}

/// The attempts of one child process.
class FailingAttempts {
public:
    FailingAttempts(Attempts attempts, Failing failing, ChildFindings& findings)
        : attempts_(std::move(attempts)), failing_(failing), findings_(findings) {
        constexpr int ENOUGH_TO_FILL_WHAT_LIBRARIES_KEEP = 3;
        for (int i = 0; i < ENOUGH_TO_FILL_WHAT_LIBRARIES_KEEP; ++i) {
            right_ = attempt(Failing::NONE, 0);
        }
        blocks_ = blocksInUse();
    }

    void goOnFrom(uint64_t first) {
        if (!right_.success || right_.result.empty() || right_.complaint != nullptr) {
            return findings_.add("fails without any fault: " + right_.result);
        }
        const uint64_t step = faultStep(allocations_);
        for (uint64_t number = first; number <= allocations_ + step; number += step) {
            findings_.startTry(number);
            tryOne(number);
        }
    }

private:
    Attempt attempt(Failing failing, uint64_t number) {
        countAllocations(failing, number);
        Attempt attempt = attempts_();
        const uint64_t count = endCounting();
        blocks_ += attempt.keptBlocks;
        if (failing == Failing::NONE) {
            allocations_ = count;
        } else {
            place_ = placeOfFailure();
        }
        return attempt;
    }

    void tryOne(uint64_t number) {
        failAndRecover(number);
        // What grows once may be kept by a library; what grows again and again is lost.
        for (int again = 0; blocksInUse() > blocks_ && again < 3; ++again) {
            blocks_ = blocksInUse();
            failAndRecover(number);
        }
        if (blocksInUse() > blocks_) {
            add(std::to_string(blocksInUse() - blocks_) + " blocks are lost");
        }
        blocks_ = blocksInUse();
    }

    void failAndRecover(uint64_t number) {
        const Attempt failed = attempt(failing_, number);
        if (failed.success && failed.result != right_.result) {
            add("shown as success: " + failed.result);
        }
        if (failed.complaint != nullptr) {
            add(failed.complaint);
        }
        const Attempt next = attempt(Failing::NONE, 0);
        if (!next.success || next.result != right_.result) {
            add("the next one: " + next.result);
        }
    }

    void add(const std::string& what) { findings_.add(what + " behind a failure in " + place_); }

    const Attempts attempts_;
    const Failing failing_;
    ChildFindings& findings_;
    Attempt right_;
    uint64_t allocations_ = 0;  // of an attempt for which there is memory
    int64_t blocks_ = 0;
    std::string place_;  // where the last failing attempt got no memory
};

}  // namespace

std::string memoryFaults(const std::function<Attempts()>& begin, Failing failing) {
    std::string text;
    for (uint64_t first = 1;;) {
        const ChildFindings findings = ChildFindings::of([&](ChildFindings& child) {
            FailingAttempts(begin(), failing, child).goOnFrom(first);
        });
        text += withoutKnown(findings.text());
        if (!findings.crashed()) {
            return text;
        }
        first = findings.lastTry() + 1;
    }
}

}  // namespace intake
