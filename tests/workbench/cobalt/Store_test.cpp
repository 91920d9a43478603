#include "workbench/cobalt/Store.h"

#include <gtest/gtest.h>

#include "tests/workbench/cobalt/show.h"

namespace cobalt {
namespace {

TEST(Store, AFieldThatWasNotMadeIsNotFound) {
    Store store;
    EXPECT_EQ(store.find("a"), nullptr);
    EXPECT_TRUE(store.empty());
}

TEST(Store, DefiningMakesAnEmptyTextOnce) {
    Store store;
    Field& field = store.define("READER_CONSOLE");
    EXPECT_EQ(&store.define("READER_CONSOLE"), &field);
    EXPECT_EQ(store.find("READER_CONSOLE"), &field);
    EXPECT_EQ(show(store), "READER_CONSOLE = \"\"\n");
}

TEST(Store, FieldsStayInPlaceWhileOthersAreMade) {
    Store store;
    Field& first = store.define("first");
    for (int i = 0; i < 10000; ++i)
        store.define("field " + std::to_string(i));
    first.setText("still here");
    EXPECT_EQ(store.find("first"), &first);
    EXPECT_EQ(store.begin()->value().text(), "still here");
    EXPECT_EQ(store.size(), 10001u);
}

TEST(Store, ATextThatIsSetIsATextWhateverItLooksLike) {
    Store store;
    store.define("a").setText("5;b=\"6\";");
    EXPECT_EQ(show(store), "a = \"5;b=\"6\";\"\n");
}

TEST(Store, ExecutingScriptsOneAfterTheOtherAddsUp) {
    Store store;
    EXPECT_FALSE(store.execute("T[0]={{a=1;},};READER_NUM_RECORDS=1;"));
    EXPECT_FALSE(store.execute("T[1]={{a=2;},};READER_NUM_RECORDS=2;"));
    EXPECT_EQ(show(store), "T = [0: [0: {a: 1}], 1: [0: {a: 2}]]\nREADER_NUM_RECORDS = 2\n");
}

TEST(Store, ACopySharesItsValuesUntilOneIsChanged) {
    Store store;
    store.execute("T[0]=1;A=x;B=y;");
    Store copy = store.copyIf([](const Field& field) { return field.name() != "B"; });
    EXPECT_EQ(&copy.find("T")->value(), &store.find("T")->value());
    copy.execute("T[1]=2;A=z;");
    EXPECT_EQ(show(copy), "T = [0: 1, 1: 2]\nA = \"z\"\n");
    EXPECT_EQ(show(store), "T = [0: 1]\nA = \"x\"\nB = \"y\"\n");
    store.execute("T[0]=5;");
    EXPECT_EQ(show(copy), "T = [0: 1, 1: 2]\nA = \"z\"\n");
}

}  // namespace
}  // namespace cobalt
