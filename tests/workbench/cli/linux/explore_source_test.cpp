// What `explore` lists of sources of any kind.

#include "tests/http/support/ScriptedServer.h"
#include "tests/workbench/cli/linux/ExploreTest.h"

namespace {

class ExploredSource : public ExploreTest {};

}  // namespace

TEST_F(ExploredSource, WhatIsSoughtIsFoundAmongMoreNamesThanAreKept) {
    std::string json = "{";
    std::string xml = "<l>";
    for (int name = 0; name < 3000; ++name) {
        json += "\"n" + std::to_string(name) + "\": {\"v\": 1}, ";
        xml += "<n" + std::to_string(name) + ">1</n" + std::to_string(name) + ">";
    }
    write("many.json", json + R"("last": {"v": [{"who": "ÅSA"}, {"who": "Bo"}]}})");
    write("many.xml", xml + "<last><v><w>ÅSA</w></v><v><w>Bo</w></v></last></l>");
    const std::string who = R"(
many.json is JSON, 55.9 kB
records  name  kind   first value  select it by
      2  who   texts  ÅSA          --set xpath=last/v/who

Load one, for example: intake-workbench load many.json --set mode=DataArray --set xpath=last/v/who
)";
    expectExplored({"many.json", "--find", "åsa"}, who);
    expectExplored({"many.json", "--at", "last/v"}, who);
    expectExplored({"many.json", "--at", "last", "--find", "WHO"}, who);
    const std::string w = R"(
many.xml is XML, 45.8 kB
records  name  kind   first value  select it by
      2  w     texts  ÅSA          --set xpath=/l/last/v/w

Load one, for example: intake-workbench load many.xml --set mode=DataArray --set xpath=/l/last/v/w
)";
    expectExplored({"many.xml", "--find", "åsa"}, w);
    expectExplored({"many.xml", "--at", "/l/last/v"}, w);
    expectExplored({"many.json", "--at", "none"}, R"(
many.json has nothing at "none": there is no "none", but n0, n1, n2, n3, n4, n5, n6, n7 and 2993 more.
)",
                   1);
}

TEST_F(ExploredSource, WhatIsNoneOfTheseIsSaid) {
    write("clubs.csv", "club;points\n");
    expectExplored({"clubs.csv"}, R"(
clubs.csv is a text, and neither JSON nor XML nor HTML; what is looked into is JSON, XML, HTML pages, workbooks and databases.
)",
                   1);
}

TEST_F(ExploredSource, AFileThatIsNotThereIsSaid) {
    expectExplored({"absent.json"}, R"(
absent.json is not there; it was looked for as FOLDER/absent.json.
)",
                   1);
}

TEST_F(ExploredSource, NoSourceIsAMistake) {
    expectExplored({}, R"(
intake-workbench: Give a source to explore: a file or a URL.
)",
                   2);
}

TEST_F(ExploredSource, ALoginThatIsRefusedIsSaid) {
    intake::ScriptedServer server([](const std::string&) {
        return intake::reply("401 Unauthorized", "{}", "WWW-Authenticate: Basic realm=\"r\"\r\n");
    });
    const std::string source = server.url("/clubs");
    expectExplored({source, "--set", "queryMode=JSON", "--set", "useAuth=1", "--set", "userName=me",
                    "--set", "password=wrong"},
                   R"(
http://SERVER/clubs answers with status 401. It refuses the user name or the password. They were not sent again: accounts lock after a few times.
)",
                   1);
    expectExplored({source}, R"(
http://SERVER/clubs answers with status 401. It asks for a login, and none is sent.
)",
                   1);
}

TEST_F(ExploredSource, AUrlIsListedWithItsStatus) {
    for (const std::string status : {"404 Not Found", "403 Forbidden"}) {
        intake::ScriptedServer server(
            [&](const std::string&) { return intake::reply(status, R"([{"id": 1}])"); });
        expectExplored({server.url("/clubs")}, "\nhttp://SERVER/clubs is JSON, with status " +
                                                   status.substr(0, 3) + R"(, 11 bytes
records  name  kind     first value  select it by
      1  *     objects               --set 'xpath=*'
      1    id  numbers  1            --set 'xpath=*/id'
)");
    }
}

TEST_F(ExploredSource, APageThatSaysNotFoundEndsWithOne) {
    intake::ScriptedServer server([](const std::string&) {
        return intake::reply("404 Not Found", "<html><title>Not found</title>");
    });
    expectExplored({server.url("/clubs")}, R"(
http://SERVER/clubs is an HTML page titled "Not found", with status 404; nothing in it can be selected.
)",
                   1);
}
