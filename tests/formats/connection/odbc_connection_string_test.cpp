// What ODBC is asked for, for the connection strings of ADO.

#include "formats/connection/odbc_connection_string.h"

#include <gtest/gtest.h>

namespace intake {
namespace {

/// The ODBC connection string, or why there is none.
std::string odbc(const std::string& text) {
    try {
        return toOdbc(ConnectionString::parse(text)).text();
    } catch (const ConnectionStringError& failure) {
        return failure.what();
    }
}

TEST(OdbcWithoutAProvider, TakesTheStringAsItIs) {
    EXPECT_EQ(odbc("DSN=league;UID=desk;PWD=s3cret"), "DSN=league;UID=desk;PWD=s3cret;");
    EXPECT_EQ(odbc("Driver={PostgreSQL Unicode};Server=db;PWD={a;b}}c};Foo=1"),
              "Driver={PostgreSQL Unicode};Server=db;PWD={a;b}}c};Foo=1;");
    EXPECT_EQ(odbc("Driver=MDBTools;DBQ=/data/a b,c.mdb"), "Driver=MDBTools;DBQ=/data/a b,c.mdb;");
    EXPECT_EQ(odbc(""), "");
}

TEST(OdbcWithoutAProvider, IsTheSameAsTheProviderForOdbc) {
    EXPECT_EQ(odbc("Provider=MSDASQL;DSN=league;UID=desk"), "DSN=league;UID=desk;");
    EXPECT_EQ(odbc("dsn=league;provider=msdasql.1"), "dsn=league;");
    EXPECT_EQ(odbc("Provider=;DSN=league"), "DSN=league;");
}

TEST(OdbcWithoutAProvider, HasTheKeysOfAdoToo) {
    EXPECT_EQ(odbc("Provider=MSDASQL.1;Persist Security Info=False;Data Source=league;"
                   "User ID=desk;Password=s3cret;Initial Catalog=cup"),
              "DSN=league;UID=desk;PWD=s3cret;Database=cup;");
    EXPECT_EQ(odbc("Provider=MSDASQL;Extended Properties=\"Driver=MDBTools;DBQ=a.mdb\";UID=x"),
              "Driver=MDBTools;DBQ=a.mdb;UID=x;");
}

TEST(OdbcWithoutAProvider, TurnsQuotesIntoBracesWhereThereIsNeed) {
    EXPECT_EQ(odbc("DSN=\"league\";PWD='a;b}c';X=\"{y}\";Y='y ';Z=' z'"),
              "DSN=league;PWD={a;b}}c};X={{y}}};Y={y };Z={ z};");
}

TEST(OdbcForSqlServer, NamesFreeTds) {
    for (const std::string provider : {"SQLOLEDB", "SQLOLEDB.1", "MSOLEDBSQL", "MSOLEDBSQL19",
                                       "SQLNCLI11", "SQLNCLI11.1", "sqlncli"}) {
        EXPECT_EQ(odbc("Provider=" + provider +
                       ";Data Source=db1\\NEWS,1433;Initial Catalog=league;"
                       "User ID=desk;Password=s3cret"),
                  "Driver={FreeTDS};Server={db1\\NEWS,1433};Database={league};UID={desk};"
                  "PWD={s3cret};");
    }
}

TEST(OdbcForSqlServer, HasTheSystemsOwnLogin) {
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Data Source=db1;Integrated Security=SSPI"),
              "Driver={FreeTDS};Server={db1};Trusted_Connection=Yes;");
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Integrated Security=true"),
              "Driver={FreeTDS};Trusted_Connection=Yes;");
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Integrated Security=false;PWD=x"),
              "Driver={FreeTDS};Trusted_Connection=No;PWD={x};");
}

TEST(OdbcForSqlServer, EndsAValueByABraceAndASemicolonOnly) {
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Password=\"a;b}\""), "Driver={FreeTDS};PWD={a;b}};");
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Password=\"a};UID=sa\""),
              "The ODBC driver \"FreeTDS\" cannot be given the value of \"Password\", because it "
              "holds a closing brace before a semicolon");
}

TEST(OdbcForPostgreSql, NamesTheUnicodeDriver) {
    for (const std::string provider : {"PostgreSQL", "PostgreSQL OLE DB Provider", "PGNP.1"}) {
        EXPECT_EQ(odbc("Provider=" + provider +
                       ";Data Source=db1;Port=5433;Location=league;User ID=desk;Password=s3cret"),
                  "Driver={PostgreSQL Unicode};Server=db1;Port=5433;Database=league;UID=desk;"
                  "PWD={s3cret};");
    }
    EXPECT_EQ(odbc("Provider=PostgreSQL;Server=db1;Initial Catalog=league"),
              "Driver={PostgreSQL Unicode};Server=db1;Database=league;");
}

TEST(OdbcForPostgreSql, HasAnyPasswordButNoOtherValueThatWouldGoOnAsAKey) {
    EXPECT_EQ(odbc("Provider=PostgreSQL;Password='a%3B;b}c{'"),
              "Driver={PostgreSQL Unicode};PWD={a%3B;b}}c{};");
    EXPECT_EQ(odbc("Provider=PostgreSQL;User ID=\"x;PWD=y\""),
              "The ODBC driver \"PostgreSQL Unicode\" cannot be given the value of \"User ID\", "
              "because it holds a semicolon or begins with a brace");
    EXPECT_EQ(odbc("Provider=PostgreSQL;User ID=\"{x\""),
              "The ODBC driver \"PostgreSQL Unicode\" cannot be given the value of \"User ID\", "
              "because it holds a semicolon or begins with a brace");
}

TEST(OdbcForMariaDb, NamesTheUnicodeDriver) {
    for (const std::string provider : {"MySQL", "MySQLProv", "MySQLProv.3.0", "MariaDB"}) {
        EXPECT_EQ(odbc("Provider=" + provider +
                       ";Data Source=db1;Port=3307;Initial Catalog=league;User ID=desk;"
                       "Password=\"a;b}c\""),
                  "Driver={MariaDB Unicode};Server={db1};Port={3307};Database={league};UID={desk};"
                  "PWD={a;b}}c};");
    }
}

TEST(OdbcForAKnownProvider, PassesKeysOnThatTheDriverMayKnow) {
    EXPECT_EQ(odbc("Provider=SQLOLEDB;Encrypt=yes;Application Name=on air"),
              "Driver={FreeTDS};Encrypt=yes;Application Name=on air;");
    EXPECT_EQ(odbc("Provider=MariaDB;Option=\"a;UID=root\""),
              "The ODBC driver \"MariaDB Unicode\" cannot be given the value of \"Option\", "
              "because it holds a semicolon or begins with a brace");
}

TEST(OdbcForAKnownProvider, LeavesOutWhatOnlyAdoKnows) {
    EXPECT_EQ(odbc("OLE DB Services=-4;Persist Security Info=True;Provider=SQLOLEDB;PWD=x"),
              "Driver={FreeTDS};PWD={x};");
}

TEST(OdbcForAnUnknownProvider, NamesItAndThoseThatThereAre) {
    const std::string others =
        "\" on this system. There are MSDASQL for any ODBC driver, SQLOLEDB, MSOLEDBSQL, SQLNCLI, "
        "PostgreSQL, MySQL, MariaDB, SQLite, and Microsoft.ACE.OLEDB for Excel workbooks";
    EXPECT_EQ(odbc("Provider=OraOLEDB.Oracle;Data Source=x;Password=s3cret"),
              "There is no provider \"OraOLEDB.Oracle" + others);
    EXPECT_EQ(odbc("Provider=Microsoft.Jet.OLEDB.4.0;Data Source=a.mdb"),
              "There is no provider \"Microsoft.Jet.OLEDB.4.0" + others);
    EXPECT_EQ(odbc("Provider=SQ"), "There is no provider \"SQ" + others);
}

}  // namespace
}  // namespace intake
