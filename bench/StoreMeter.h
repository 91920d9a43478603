#pragma once

#include <utility>

#include "bench/process_usage.h"
#include "workbench/cobaltlib/StoreObserver.h"

namespace bench {

/// The processor time that the data store itself takes of its thread: carrying out scripts and
/// setting fields.
class StoreMeter final : public cobaltlib::StoreObserver {
public:
    LookUp lookedUp(std::string_view, DataField* found) override {
        console_.field = found;
        return {found != nullptr ? &console_ : nullptr, true};
    }
    void executing() override { start_ = threadCpuMilliseconds(); }
    void executed(std::string_view script, const cobalt::ScriptError*) override {
        spent_ += threadCpuMilliseconds() - start_;
        ++scripts_;
        bytes_ += script.size();
    }

    /// Milliseconds since it was asked last.
    double takeSpent() { return std::exchange(spent_, 0); }

    size_t scripts() const { return scripts_; }
    size_t bytes() const { return bytes_; }

private:
    struct MeteredField final : DataField {
        explicit MeteredField(StoreMeter& owner) : meter(owner) {}
        void setValue(const char* text) override {
            const double start = threadCpuMilliseconds();
            field->setValue(text);
            meter.spent_ += threadCpuMilliseconds() - start;
        }
        StoreMeter& meter;
        DataField* field = nullptr;
    };

    MeteredField console_{*this};
    double start_ = 0;
    double spent_ = 0;
    size_t scripts_ = 0;
    size_t bytes_ = 0;
};

}  // namespace bench
