// Scripts that are generated, executed, and written again from the store.

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

std::string record(int i) {
    const std::string number = std::to_string(i);
    std::string text = "T[";
    text += number;
    text += "]={{id=";
    text += number;
    text += ";name=\"\"Club ";
    text += number;
    text += "\"\";price=12.34;tags[0-1]=\"\"a\"\",\"\"b\"\",;nested={x=1;};},};";
    return text;
}

// A million assignments to name0, name1 and so on.
std::string numberedAssignments(const std::string& name, const std::string& assigned) {
    std::string script;
    for (int i = 0; i < 1000000; ++i) {
        script += name;
        script += std::to_string(i);
        script += assigned;
    }
    return script;
}

void write(const Value& value, std::string& script);

void writeMembers(const Value& structure, std::string& script) {
    script += '{';
    for (const Entry& member : structure.entries()) {
        script += member.key;
        if (member.value.kind() == Kind::Array) {
            script += "[0-";
            script += std::to_string(member.value.entries().size() - 1);
            script += ']';
        }
        script += '=';
        write(member.value, script);
        script += ';';
    }
    script += '}';
}

void writeElements(const Value& array, std::string& script) {
    const bool isFlat = array.entries()[0].value.isScalar();
    if (!isFlat) script += '{';
    for (const Entry& element : array.entries()) {
        write(element.value, script);
        script += ',';
    }
    if (!isFlat) script += '}';
}

void write(const Value& value, std::string& script) {
    switch (value.kind()) {
        case Kind::Text:
            script += "\"\"";
            script += value.text();
            script += "\"\"";
            return;
        case Kind::Number:
            script += value.text();
            return;
        case Kind::Structure:
            writeMembers(value, script);
            return;
        case Kind::Array:
            writeElements(value, script);
            return;
    }
}

TEST(LargeScript, OfAHundredThousandRecordsIsTheSameWhenWrittenAgain) {
    std::string script;
    for (int i = 0; i < 100000; ++i)
        script += record(i);
    Store store;
    ASSERT_FALSE(store.execute(script));
    std::string again;
    again.reserve(script.size());
    for (const Entry& entry : store.find("T")->value().entries()) {
        again += "T[" + entry.key + "]=";
        write(entry.value, again);
        again += ';';
    }
    EXPECT_TRUE(again == script);
}

TEST(LargeScript, ThatIsExecutedAgainChangesNothing) {
    std::string script;
    for (int i = 0; i < 1000; ++i)
        script += record(i);
    Store store;
    ASSERT_FALSE(store.execute(script));
    const std::string once = show(store);
    ASSERT_FALSE(store.execute(script));
    EXPECT_EQ(show(store), once);
}

TEST(LargeScript, AMillionFieldsAreFoundByName) {
    Store store;
    ASSERT_FALSE(store.execute(numberedAssignments("field", "=5;")));
    EXPECT_EQ(store.size(), 1000000u);
    store.find("field999999")->setText("the last one");
    EXPECT_EQ(store.find("field999998")->value().text(), "5");
    EXPECT_EQ(store.find("field999999")->value().text(), "the last one");
}

TEST(LargeScript, AMillionMembersOfOneStructureAreFoundByName) {
    Store store;
    ASSERT_FALSE(store.execute("s={" + numberedAssignments("m", "[0-0]=1,;") + "};"));
    EXPECT_EQ(store.find("s")->value().entries().size(), 1000000u);
    EXPECT_EQ(show(*store.find("s")->value().entries().find("m999999")), "[0: 1]");
}

TEST(LargeScript, OfRandomSignsIsExecutedOrRefusedWhole) {
    std::mt19937 random(1);
    const std::string signs = "={}[];,\"\"ab01- \n";
    for (int run = 0; run < 20000; ++run) {
        std::string script;
        for (int i = 0; i < 40; ++i)
            script += signs[random() % signs.size()];
        Store store;
        store.define("before");
        if (store.execute(script)) {
            EXPECT_EQ(show(store), "before = \"\"\n") << script;
        }
    }
}

}  // namespace
}  // namespace cobalt
