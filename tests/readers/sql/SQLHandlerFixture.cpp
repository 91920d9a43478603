#include "tests/readers/sql/SQLHandlerFixture.h"

#include "tests/support/expect_carried_out.h"
#include "tests/workbench/cobalt/show.h"

namespace intake {

SQLHandlerFixture::SQLHandlerFixture() {
    logger_.setLevel(-1);
    request_.mode = "SQL";
    request_.connStr = "DSN=league";
    request_.query = "SELECT * FROM teams";
    request_.key = "code";
    request_.table = 'T';
    request_.numRows = 1000000;
    request_.fieldsDelimiter = '|';
    request_.rowsDelimiter = '/';
}

std::string SQLHandlerFixture::scriptAlone(TargetMode mode) {
    request_.targetMode = mode;
    script_.clear();
    error_.clear();
    EXPECT_TRUE(read());
    EXPECT_EQ(error_, "");
    return script_;
}

std::string SQLHandlerFixture::script(TargetMode mode) {
    const std::string written = scriptAlone(mode);
    expectCarriedOut(written, mode);
    return written;
}

std::string SQLHandlerFixture::error(TargetMode mode) {
    request_.targetMode = mode;
    error_.clear();
    EXPECT_FALSE(read());
    return error_;
}

std::string SQLHandlerFixture::stored(const std::string& script) {
    return cobalt::execute(script);
}

}  // namespace intake
