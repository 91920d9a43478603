#pragma once

#include <cstddef>
#include <random>
#include <string>

namespace intake {

/// Makes documents, paths and damage, the same ones in every run.
class RandomJson {
public:
    explicit RandomJson(unsigned seed) : random_(seed) {}

    /// A valid document of few names and values, so that paths and filters often match.
    std::string document();

    /// A path of names, slashes, brackets and blanks, often malformed.
    std::string path();

    /// The text with some of its bytes changed, left out, repeated or added.
    std::string damaged(std::string text);

    /// Up to `longest` bytes; most of them are such that JSON is made of.
    std::string bytes(size_t longest);

    size_t below(size_t bound) { return static_cast<size_t>(random_() % bound); }

private:
    void appendValue(std::string& text, int depth);
    void appendChildren(std::string& text, int depth, bool named);
    char byte();

    std::mt19937_64 random_;
};

}  // namespace intake
