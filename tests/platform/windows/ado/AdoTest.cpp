#include "tests/platform/windows/ado/AdoTest.h"

namespace intake {

AdoTest::AdoTest() {
    logger_.setLevel(-1);
    request_.mode = "SQL";
    request_.connStr = "Provider=League";
    request_.query = "SELECT * FROM teams";
    request_.key = "code";
    request_.table = 'T';
    request_.numRows = 1000000;
    request_.fieldsDelimiter = '|';
    request_.rowsDelimiter = '/';
}

bool AdoTest::read(DatabaseServices& databases) {
    script_.clear();
    error_.clear();
    return SQLHandler(logger_, databases, endMark_).Read(request_, script_, error_);
}

std::string AdoTest::script(DatabaseServices& databases, TargetMode mode) {
    request_.targetMode = mode;
    EXPECT_TRUE(read(databases));
    EXPECT_EQ(error_, "");
    return script_;
}

}  // namespace intake
