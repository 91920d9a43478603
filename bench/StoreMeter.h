#pragma once

#include <utility>

#include "bench/process_usage.h"
#include "workbench/cobaltlib/StoreObserver.h"

namespace bench {

/// What the data store itself takes of its thread: carrying out scripts and setting fields.
class StoreMeter final : public cobaltlib::StoreObserver {
public:
    LookUp lookedUp(std::string_view, DataField* found) override {
        console_.field = found;
        return {found != nullptr ? &console_ : nullptr, true};
    }
    cobalt::Origin executing() override {
        start_ = threadUsage();
        return {};
    }
    void executed(std::string_view script, const cobalt::ScriptError*) override {
        spent_ += threadUsage() - start_;
        ++scripts_;
        bytes_ += script.size();
    }

    /// Since it was asked last.
    ThreadUsage takeSpent() { return std::exchange(spent_, {}); }

    size_t scripts() const { return scripts_; }
    size_t bytes() const { return bytes_; }

private:
    struct MeteredField final : DataField {
        explicit MeteredField(StoreMeter& owner) : meter(owner) {}
        void setValue(const char* text) override {
            const ThreadUsage start = threadUsage();
            field->setValue(text);
            meter.spent_ += threadUsage() - start;
        }
        StoreMeter& meter;
        DataField* field = nullptr;
    };

    MeteredField console_{*this};
    ThreadUsage start_;
    ThreadUsage spent_;
    size_t scripts_ = 0;
    size_t bytes_ = 0;
};

}  // namespace bench
