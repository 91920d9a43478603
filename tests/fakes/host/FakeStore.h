#pragma once

#include <map>
#include <memory>
#include <string>

#include "host/cobalt.h"

/// A field that only reports what it is told.
class FakeField final : public DataField {
public:
    explicit FakeField(std::string name) : name_(std::move(name)) {}

    void setValue(const char* text) override;

    const std::string& name() const { return name_; }

private:
    std::string name_;
};

/// A data store that holds the fields that a test adds, and executes nothing.
class FakeStore final : public Cobalt {
public:
    explicit FakeStore(std::string name) : name_(std::move(name)) {}

    DataField* findField(const char* name, int32_t create, int32_t local) override;
    int32_t executeScript(const char* text, int32_t flags) override;

    FakeField& add(const std::string& field);

    const std::string& name() const { return name_; }

    /// The text that was executed last.
    const std::string& lastScript() const { return lastScript_; }

private:
    std::string name_;
    std::string lastScript_;
    std::map<std::string, std::unique_ptr<FakeField>> fields_;
};
