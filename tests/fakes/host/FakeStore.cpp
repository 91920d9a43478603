#include "tests/fakes/host/FakeStore.h"

#include "tests/fakes/host/FakeHost.h"

void FakeField::setValue(const char* text) {
    fakeHost().called(name_ + ".setValue", text);
}

DataField* FakeStore::findField(const char* name, int32_t create, int32_t local) {
    fakeHost().called(name_ + ".findField", name, create, local);
    const auto found = fields_.find(name);
    return found == fields_.end() ? nullptr : found->second.get();
}

int32_t FakeStore::executeScript(const char* text, int32_t flags) {
    lastScript_ = text;
    fakeHost().called(name_ + ".executeScript", text, flags);
    return 1;
}

FakeField& FakeStore::add(const std::string& field) {
    return *(fields_[field] = std::make_unique<FakeField>(field));
}
