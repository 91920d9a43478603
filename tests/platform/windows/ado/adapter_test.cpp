// What ADO is asked, in which order, and that everything is given back, with stand-ins for its
// objects.

#include "platform/PlatformError.h"
#include "platform/windows/com/Variant.h"
#include "tests/platform/windows/BigAllocations.h"
#include "tests/platform/windows/ado/AdoDoubles.h"
#include "tests/platform/windows/ado/AdoTest.h"

namespace intake {
namespace {

VARIANT number(long value) {
    VARIANT variant{};
    variant.vt = VT_I4;
    variant.lVal = value;
    return variant;
}

class AdoAdapter : public AdoTest {
protected:
    AdoAdapter() { ado_.names = {L"code", L"points"}; }

    void TearDown() override { EXPECT_EQ(ado_.calls.living(), 0); }

    AdoDoubles ado_;
    AdoDatabases databases_{ado_.factory()};
};

TEST_F(AdoAdapter, OpensQueriesAndWalksTheRecords) {
    ado_.records = {{number(1), number(10)}, {number(2), number(20)}};
    EXPECT_EQ(script(databases_, DATA_TABLE),
              R"(T[1]={{code="1";points="10";};};T[2]={{code="2";points="20";};};)");
    EXPECT_EQ(ado_.calls.text(),
              "create connection anywhere\n"
              "QueryInterface\n"
              "create recordset anywhere\n"
              "QueryInterface\n"
              "Connection.Open |Provider=League|||-1\n"
              "Recordset.Open |SELECT * FROM teams|connection|-1|1|-1\n"
              "Recordset.Fields\n"
              "Fields.Count\n"
              "Recordset.EOF\n"
              "Recordset.EOF\n"
              "Recordset.MoveFirst\n"
              "Fields.Item 0\n"
              "Field.Name\n"
              "Fields.Item 1\n"
              "Field.Name\n"
              "Recordset.EOF\n"
              "Fields.Item code\n"
              "Field.Name\n"
              "Field.Value\n"
              "Field.Value\n"
              "Field.Value\n"
              "Recordset.MoveNext\n"
              "Recordset.EOF\n"
              "Field.Value\n"
              "Field.Value\n"
              "Field.Value\n"
              "Recordset.MoveNext\n"
              "Recordset.EOF\n");
}

TEST_F(AdoAdapter, FindsTheKeyWithoutRegardToCase) {
    ado_.records = {{number(1), number(10)}};
    request_.key = "POINTS";
    EXPECT_EQ(script(databases_, DATA_TABLE), R"(T[10]={{code="1";points="10";};};)");
}

TEST_F(AdoAdapter, SaysThatAKeyIsMissing) {
    ado_.records = {{number(1), number(10)}};
    request_.key = "goals";
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_, R"(ERROR: Key: "goals" not found.)");
}

TEST_F(AdoAdapter, SaysThatAFieldCannotBeTaken) {
    ado_.records = {{number(1), number(10)}};
    ado_.missingField = 1;
    request_.targetMode = DATA_ARRAY;
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_, "ERROR: Cannot retrieve field #1");
}

TEST_F(AdoAdapter, ReportsEveryErrorOfAConnectionThatFails) {
    ado_.opening = E_FAIL;
    ado_.errors = {{static_cast<long>(0x80004005), L"No server \u00e9"}, {17, L""}};
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open the connection string Provider=League"
              "Error number: 0x80004005    No server \xC3\xA9\r\r\n"
              "Error number: 0x11    \r\r\n");
}

TEST_F(AdoAdapter, ReportsEveryErrorOfAQueryThatFails) {
    ado_.querying = static_cast<HRESULT>(0x80040E14);
    ado_.errors = {{static_cast<long>(0x80040E14), L"Incorrect syntax"}};
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open recordset with query SELECT * FROM teams\n"
              "Error number: 0x80040e14    Incorrect syntax\r\r\n");
}

TEST_F(AdoAdapter, ReportsWhatTheFailingObjectTold) {
    ICreateErrorInfo* told = nullptr;
    ASSERT_EQ(CreateErrorInfo(&told), S_OK);
    wchar_t source[] = L"League";
    wchar_t description[] = L"The league is closed";
    told->SetSource(source);
    told->SetDescription(description);
    IErrorInfo* info = nullptr;
    ASSERT_EQ(told->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)), S_OK);
    SetErrorInfo(0, info);
    info->Release();
    told->Release();
    ado_.opening = E_FAIL;
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open the connection string Provider=League"
              "ERROR in Connection Open = The league is closed");
}

TEST_F(AdoAdapter, TakesAnAdoWithoutAnErrorCollectionAsOneThatReportsNone) {
    ado_.opening = E_FAIL;
    ado_.listingErrors = E_NOTIMPL;
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open the connection string Provider=League"
              "ERROR in Connection Open = ");
}

TEST_F(AdoAdapter, MissesACollectionThatIsNotThere) {
    ado_.hasFields = false;
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open recordset with query SELECT * FROM teams\n"
              "ERROR in Connection Open = ");
}

/// Of ADO's own failures: 3704, "Operation is not allowed when the object is closed".
TEST_F(AdoAdapter, FailsAQueryWithoutAResultSet) {
    ado_.calls.failAt(9);  // asking for the end
    EXPECT_FALSE(read(databases_));
    EXPECT_EQ(error_,
              "Failed to open recordset with query SELECT * FROM teams\n"
              "ERROR in Connection Open = ");
}

/// Every text is big enough for its leak to be seen.
class AdoFailures : public AdoAdapter {
protected:
    AdoFailures() {
        const std::wstring big(BigAllocations::CHARACTERS, L'k');
        request_.connStr = request_.query = std::string(big.begin(), big.end());
        request_.key = request_.query;
        request_.targetMode = DATA_TABLE;
        ado_.names = {big, L"points"};
        text_.setText(request_.key);
        ado_.records = {{text_.get(), number(1)}, {text_.get(), number(2)}};
        ado_.errors = {{1, big}, {2, L"two"}};
    }

    /// Makes each call of a load fail in turn. How many there are.
    int failEachCall() {
        EXPECT_EQ(BigAllocations::living(), living_ + 1);  // the value
        int failing = 0;
        do {
            ado_.calls = ComCalls();
            ado_.calls.failAt(++failing);
            SCOPED_TRACE(failing);
            load();
            EXPECT_EQ(ado_.calls.living(), 0);
            EXPECT_EQ(BigAllocations::living(), living_ + 1);
            EXPECT_TRUE(failed_ || failing > ado_.calls.count());
        } while (failing <= ado_.calls.count());
        return ado_.calls.count();
    }

private:
    void load() {
        ado_.record = 0;
        try {
            failed_ = !read(databases_);
            EXPECT_NE(failed_, error_.empty());
        } catch (const PlatformError& failure) {
            EXPECT_EQ(static_cast<HRESULT>(failure.code()), ComCalls::FAILURE);
            failed_ = true;
        }
    }

    const size_t living_ = BigAllocations::living();
    Variant text_;
    bool failed_ = false;
};

TEST_F(AdoFailures, OfAnyCallEndTheLoadAndGiveEverythingBack) {
    EXPECT_GT(failEachCall(), 20);
}

TEST_F(AdoFailures, OfAnyCallWhileErrorsAreReportedGiveEverythingBack) {
    ado_.opening = E_FAIL;
    EXPECT_GT(failEachCall(), 10);
}

}  // namespace
}  // namespace intake
