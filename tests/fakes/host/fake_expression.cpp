#include "tests/fakes/host/FakeHost.h"

namespace {

struct Implementation {
    std::string text;
    DataVariableQuery* query = nullptr;
};

Implementation& of(void* implementation) {
    return *static_cast<Implementation*>(implementation);
}

}  // namespace

DataVariableQuery::~DataVariableQuery() = default;

DataExpression::DataExpression() : implementation_(nullptr) {
    fakeHost().called("DataExpression");
    implementation_ = new Implementation;
    ++fakeHost().expressionsMade;
}

DataExpression::~DataExpression() {
    ++fakeHost().expressionsGone;
    delete &of(implementation_);
}

void DataExpression::setVariableQuery(DataVariableQuery* query) {
    of(implementation_).query = query;
    fakeHost().called("setVariableQuery", query);
}

void DataExpression::setHostField(Cobalt* store, DataField* field) {
    fakeHost().called("setHostField", store, field);
}

int32_t DataExpression::parse(const char* text) {
    of(implementation_).text = text;
    fakeHost().called("parse", text);
    return 1;
}

int32_t DataExpression::executeExtended(Cobalt* store, DataCommandFunction command, int32_t flags) {
    const Implementation& self = of(implementation_);
    fakeHost().macroSource = self.query;
    fakeHost().called(printed(self.text) + ".executeExtended", store, command, flags);
    return 1;
}
