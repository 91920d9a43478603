#pragma once

#include <string>

#include "tests/workbench/cli/linux/ExplainTest.h"

/// A test of `explain` with a league in JSON.
class ExplainedJson : public ExplainTest {
protected:
    static constexpr const char* league = R"({
  "data": {
    "standings": {"rows": [
      {"id": 7, "name": "Harbour", "group": "A", "points": 12, "coach": {"name": "Ada"}},
      {"id": 9, "name": "Quay", "group": "B", "points": 9, "coach": {"name": "Bo"}},
      {"id": 11, "name": "Pier", "group": "A", "points": 4, "coach": {"name": "Cy"}}
    ]},
    "fixtures": []
  }
})";

    ExplainedJson() { write("league.json", league); }

    /// Explains the load of the league's table.
    void expectOfLeague(const Settings& settings, const std::string& text) const {
        expectExplained(joined({"queryMode=JSON", "filename=league.json", "table=Team", "key=id",
                                "xpath=data/standings/rows"},
                               settings),
                        text);
    }

    /// Explains the load of a file with this in it.
    void expectOf(const std::string& content, const Settings& settings,
                  const std::string& text) const {
        write("league.json", content);
        expectOfLeague(settings, text);
    }
};
