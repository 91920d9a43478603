#pragma once

// The parameter record of one plugin instance: a block of memory laid out from what the plugin
// registered, with the text buffers that it points to. The plugin reads and writes it in place.
// Owned by its Instance; host's thread only.

#include <cstdint>
#include <memory>
#include <string_view>
#include <vector>

#include "workbench/lumo/ParameterTable.h"
#include "workbench/lumo/RecordLayout.h"

namespace lumo {

class Record {
public:
    /// A record with every parameter at its default and the user data zero. `parameters` must
    /// outlive it.
    explicit Record(const ParameterTable& parameters);

    /// What the plugin's entry points receive.
    void* data() { return block_.data(); }

    /// Values by host index; the index must name a parameter of the fitting kind. A text must be
    /// shorter than its capacity.
    std::string_view text(int32_t hostIndex) const;
    void setText(int32_t hostIndex, std::string_view text);
    int32_t integer(int32_t hostIndex) const;
    void setInteger(int32_t hostIndex, int32_t value);
    float number(int32_t hostIndex) const;
    void setNumber(int32_t hostIndex, float value);

private:
    template <typename Value>
    Value read(int32_t hostIndex) const;
    template <typename Value>
    void write(int32_t hostIndex, Value value);
    void addBuffer(int32_t hostIndex, int32_t capacity);
    void setDefault(int32_t hostIndex);

    const ParameterTable& parameters_;
    RecordLayout layout_;
    std::vector<std::byte> block_;
    std::vector<std::unique_ptr<char[]>> buffers_;  // each its own, so that an overrun is noticed
};

}  // namespace lumo
