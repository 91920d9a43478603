#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace intake {

/// Texts one behind the other in one block, by number.
class TextTable {
public:
    /// Forgets all texts, and makes room for so many bytes of them.
    void restart(size_t bytes) {
        texts_.clear();
        ends_.clear();
        texts_.reserve(bytes);
    }

    /// Returns the text's number.
    size_t add(std::string_view text) {
        texts_.append(text);
        ends_.push_back(texts_.size());
        return ends_.size() - 1;
    }

    size_t size() const { return ends_.size(); }

    /// Lent until the next change.
    std::string_view operator[](size_t number) const {
        const size_t start = number == 0 ? 0 : ends_[number - 1];
        return {texts_.data() + start, ends_[number] - start};
    }

private:
    std::string texts_;
    std::vector<size_t> ends_;
};

}  // namespace intake
