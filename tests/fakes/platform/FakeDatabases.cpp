#include "tests/fakes/platform/FakeDatabases.h"

#include "formats/text/ascii.h"

namespace intake {

namespace {

class FakeRecordset final : public Recordset {
public:
    explicit FakeRecordset(FakeDatabases& databases) : databases_(databases) {}
    ~FakeRecordset() override { databases_.noteEnd("recordset"); }

    size_t fieldCount() override {
        databases_.note("fieldCount");
        return databases_.names.size();
    }
    std::string_view fieldName(size_t field) override {
        databases_.note("fieldName", std::to_string(field));
        return databases_.names.at(field);
    }
    std::optional<size_t> findField(const std::string& name) override {
        databases_.note("findField", name);
        for (size_t field = 0; field < databases_.names.size(); ++field) {
            if (equalIgnoringCase(databases_.names[field], name)) {
                return field;
            }
        }
        return {};
    }

    void moveFirst() override {
        databases_.note("moveFirst");
        needRecord();
        position_ = 0;
    }
    void moveNext() override {
        databases_.note("moveNext");
        needRecord();
        ++position_;
        takeBackLent();
    }
    bool atEnd() override {
        databases_.note("atEnd");
        return position_ == databases_.rows.size();
    }

    bool value(size_t field, FieldValue& value) override {
        databases_.note("value", std::to_string(field));
        needRecord();
        takeBackLent();
        const FakeValue& scripted = databases_.rows[position_].at(field);
        value = scripted.value;
        lent_ = scripted.text;
        value.text = lent_;
        return !scripted.isMissing;
    }

private:
    void needRecord() const {
        if (position_ == databases_.rows.size()) {
            throw PlatformError(0x800A0BCD, "", "Fake", "There is no current record.");
        }
    }

    /// What is lent no longer must not be used; who does gets the wrong text.
    void takeBackLent() { lent_.assign(lent_.size(), '?'); }

    FakeDatabases& databases_;
    size_t position_ = 0;
    std::string lent_;
};

class FakeConnection final : public Connection {
public:
    explicit FakeConnection(FakeDatabases& databases) : databases_(databases) {}
    ~FakeConnection() override { databases_.noteEnd("connection"); }

    void open(const std::string& connectionString) override {
        databases_.note("open", connectionString);
    }
    std::unique_ptr<Recordset> openRecordset(const std::string& query) override {
        databases_.note("openRecordset", query);
        return std::make_unique<FakeRecordset>(databases_);
    }
    std::vector<Error> errors() override {
        databases_.note("errors");
        return databases_.errors;
    }
    std::vector<std::string> warnings() override { return databases_.warnings; }

private:
    FakeDatabases& databases_;
};

}  // namespace

FakeValue FakeValue::natural(VariantType type, uint64_t number) {
    FakeValue value(type, 0);
    value.value.natural = number;
    return value;
}

FakeValue FakeValue::number(VariantType type, double number) {
    FakeValue value(number);
    value.value.type = type;
    return value;
}

FakeValue FakeValue::missing() {
    FakeValue value(nullptr);
    value.isMissing = true;
    return value;
}

std::unique_ptr<Connection> FakeDatabases::createConnection(const EndMark& endMark) {
    note("createConnection");
    endMark_ = &endMark;
    return std::make_unique<FakeConnection>(*this);
}

void FakeDatabases::failAt(const std::string& call, int occurrence) {
    failingCall_ = call;
    callsToFailure_ = occurrence;
}

PlatformError FakeDatabases::failure() {
    return {0x80004005, "Unspecified error", "Fake database", "The server went away."};
}

const std::string& FakeDatabases::failureReport() {
    static const std::string report =
        "Error\n"
        "\tCode = 0x80004005\n"
        "\tCode meaning = Unspecified error\n"
        "\tSource = Fake database\n"
        "\tDescription = The server went away.\n";
    return report;
}

void FakeDatabases::note(const std::string& call, const std::string& details) {
    calls_ += call + (details.empty() ? "" : " " + details) + "\n";
    if (call == failingCall_ && --callsToFailure_ == 0) {
        throw failure();
    }
}

}  // namespace intake
