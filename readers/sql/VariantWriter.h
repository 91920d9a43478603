#pragma once

#include <cstdint>
#include <string>

#include "platform/Database.h"

namespace intake {

/// Writes the values and numbers of one result, each as its variant type asks for. A type that has
/// no value to show switches the result to hexadecimal: every integer written later is, the index
/// and count of records too. Made for one request; worker thread.
class VariantWriter {
public:
    /// The script is borrowed and appended to.
    explicit VariantWriter(std::string& script) : script_(script) {}

    /// Types that are no value to show (dates, currency, arrays) write nothing.
    void writeValue(const FieldValue& value) {
        if (value.type == VT_BSTR) {  // as most are
            script_.append(value.text);
        } else {
            writeInForm(value);
        }
    }

    void writeInteger(int64_t number) { writeSigned(number, 64); }

private:
    void writeInForm(const FieldValue& value);
    void writeSigned(int64_t number, int bits);
    void writeUnsigned(uint64_t number);
    void writeTypeNumber(VariantType type);

    std::string& script_;
    bool hexadecimal_ = false;
};

}  // namespace intake
