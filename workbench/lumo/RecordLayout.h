#pragma once

// Where each parameter of the plugin stands in an instance record: in the order of registration,
// at its natural alignment.

#include <cstddef>
#include <cstdint>
#include <vector>

#include "workbench/lumo/ParameterTable.h"

namespace lumo {

class RecordLayout {
public:
    explicit RecordLayout(const ParameterTable& parameters);

    /// The byte offset of a parameter. A push button takes no space: its offset is that of
    /// whatever follows.
    std::size_t offset(int32_t hostIndex) const;
    std::size_t size() const { return size_; }

private:
    std::vector<std::size_t> offsets_;
    std::size_t size_ = 0;
};

}  // namespace lumo
