#pragma once

#include <libxml/tree.h>

#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <type_traits>
#include <vector>

namespace intake {

/// Memory for the nodes of a tree and their texts, which is given up, or used again, in one step.
/// Owned by whoever builds the tree, and used on its thread. Throws std::bad_alloc.
class XmlArena {
public:
    /// A node without anything in it.
    template <class Node>
    Node* make() {
        static_assert(std::is_trivially_destructible_v<Node>);
        void* const memory = take((sizeof(Node) + ALIGNMENT - 1) & ~(ALIGNMENT - 1));
        std::memset(memory, 0, sizeof(Node));
        return static_cast<Node*>(memory);
    }

    /// A copy, with a zero behind it.
    xmlChar* copy(std::string_view text) {
        char* const memory = take((text.size() + ALIGNMENT) & ~(ALIGNMENT - 1));
        std::memcpy(memory, text.data(), text.size());
        memory[text.size()] = 0;
        return reinterpret_cast<xmlChar*>(memory);
    }

    /// Lets the memory be used again; whatever was made is gone.
    void reset() {
        block_ = 0;
        used_ = 0;
    }

private:
    static constexpr size_t ALIGNMENT = alignof(void*);
    static constexpr size_t BLOCK = 256 << 10;

    struct Block {
        std::unique_ptr<char[]> bytes;
        size_t size;
    };

    char* take(size_t size) {
        if (block_ == blocks_.size() || blocks_[block_].size - used_ < size) {
            moveOn(size);
        }
        char* const memory = blocks_[block_].bytes.get() + used_;
        used_ += size;
        return memory;
    }

    /// Goes to the next block that has room, which is a new one where there is none.
    void moveOn(size_t size) {
        while (block_ < blocks_.size() && blocks_[block_].size - used_ < size) {
            ++block_;
            used_ = 0;
        }
        if (block_ == blocks_.size()) {
            const size_t wanted = size > BLOCK ? size : BLOCK;
            blocks_.push_back({std::unique_ptr<char[]>(new char[wanted]), wanted});
        }
    }

    std::vector<Block> blocks_;
    size_t block_ = 0;  // the one in use
    size_t used_ = 0;   // of that
};

}  // namespace intake
