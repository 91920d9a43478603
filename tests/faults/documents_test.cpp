// Documents that end too early, and such in which bits are wrong, of every kind.

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <random>

#include "tests/faults/FaultSources.h"
#include "tests/faults/TestWorker.h"
#include "tests/faults/extent.h"

namespace intake {

namespace {

class DamagedDocuments : public testing::Test {
protected:
    /// Loads each source once for every damage that `damage(bytes, number)` does to it, and passes
    /// its name, the number and the result to `check`.
    template <class Damage, class Check>
    void loadDamaged(uint64_t (*count)(const std::string&), Damage damage, Check check) {
        for (const FaultLoad& load : sources_.fromFiles()) {
            const std::string path = sources_.path(load.name);
            const std::string whole = contentOf(path);
            const uint64_t tries = count(whole);
            for (uint64_t number = 0; number < tries; number += faultStep(tries)) {
                write(path, damage(whole, number));
                check(load.name, number, worker_.load(load.command));
            }
            write(path, whole);
            EXPECT_TRUE(worker_.load(load.command).success) << load.name;
        }
    }

    /// A failure says why and writes nothing.
    static void expectInOrder(const std::string& name, uint64_t number, const LoadResult& result) {
        EXPECT_TRUE(result.success || !result.error.empty()) << name << " " << number;
        EXPECT_TRUE(result.success || result.script.empty()) << name << " " << number;
    }

private:
    static std::string contentOf(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator(file), {}};
    }

    static void write(const std::string& path, const std::string& content) {
        std::ofstream(path, std::ios::binary) << content;
    }

    const FaultSources sources_;
    TestWorker worker_;
};

TEST_F(DamagedDocuments, ThatEndAnywhereAreRefusedUnlessTheirKindHasNoEnd) {
    loadDamaged([](const std::string& whole) -> uint64_t { return whole.size(); },
                [](const std::string& whole, uint64_t length) { return whole.substr(0, length); },
                [](const std::string& name, uint64_t length, const LoadResult& result) {
                    expectInOrder(name, length, result);
                    if (name == "json" || name == "xml" || name == "workbook") {
                        EXPECT_FALSE(result.success) << name << " of " << length << " bytes";
                    }
                });
}

TEST_F(DamagedDocuments, WithWrongBitsAreReadOrRefused) {
    constexpr int MOST_BITS = 8;
    loadDamaged(
        [](const std::string&) -> uint64_t { return triesAllFaults() ? 20'000 : 300; },
        [](std::string bytes, uint64_t number) {
            std::minstd_rand random(static_cast<uint32_t>(number) + 1);
            for (uint64_t bits = 1 + random() % MOST_BITS; bits > 0; --bits) {
                char& byte = bytes[random() % bytes.size()];
                byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << random() % 8));
            }
            return bytes;
        },
        expectInOrder);
}

}  // namespace

}  // namespace intake
