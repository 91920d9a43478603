#include "tests/plugin/TestRecord.h"

#include "plugin/Intake.h"

namespace intake {

TestRecord::TestRecord() {
    record_.Magic = 9473;
    record_.FieldName = makeText(100);
    record_.RemoteContainer = makeText(512);
    record_.ConvTableName = makeText(200);
    makeReaderTexts(record_.params);
    record_.params.avoidCache = 1;
    record_.params.logLevel = 2;
    record_.params.autoLoadInterval = 10.0F;
    record_.params.proxyMode = 1;
}

TestRecord::~TestRecord() {
    delete record_.instance;
}

void TestRecord::set(char* buffer, const std::string& text) {
    buffer[text.copy(buffer, text.size())] = 0;
}

char* TestRecord::makeText(size_t capacity, const std::string& initial) {
    char* const buffer = texts_.emplace_back(capacity).data();
    set(buffer, initial);
    return buffer;
}

void TestRecord::makeReaderTexts(ReaderParams& params) {
    for (char** text : {&params.filename, &params.sheet, &params.connStr, &params.userName,
                        &params.password, &params.xpath, &params.namespaces}) {
        *text = makeText(512);
    }
    for (char** text :
         {&params.key, &params.fromRow, &params.numRows, &params.range, &params.rowsDelimiter,
          &params.varsPrefix, &params.proxyUrl, &params.proxyUser, &params.proxyPwd}) {
        *text = makeText(80);
    }
    params.query = makeText(4096);
    params.table = makeText(80, "Table");
    params.postAction = makeText(2048);
    params.shmvar = makeText(80, "VAR");
    params.delimiter = makeText(80, "|");
    params.customHeaders = makeText(4096);
}

}  // namespace intake
