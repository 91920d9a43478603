// Which expressions may look at attributes. That the others find the same without them is compared
// where rows are read.

#include "formats/xml/xpath_attributes.h"

#include <gtest/gtest.h>

namespace intake {

TEST(AttributesInAnExpression, AreLookedAtByTheirAxisByLanguageAndByStepsPutTogether) {
    for (const char* const expression :
         {"/a/@b", "/a[@b]", "(//a[b[@*='c']])", "a/attribute::b", "a/attribute :: *",
          "/a[lang('en')]", "/a[lang ('en')]", "/a/_each(., concat('att', 'ribute::b'))"}) {
        EXPECT_TRUE(mayLookAtAttributes(expression)) << expression;
    }
}

TEST(AttributesInAnExpression, MayBeThereWhereTheirSignIsPartOfALiteralOrAName) {
    for (const char* const expression : {"/a[b='c@d']", "/a/language", "/attributes/a"}) {
        EXPECT_TRUE(mayLookAtAttributes(expression)) << expression;
    }
}

TEST(AttributesInAnExpression, AreNoneOnAnyOtherAxis) {
    for (const char* const expression :
         {"", "(/a/b)", "//node()", "/a/descendant-or-self::node()", "//a/ancestor::node()",
          "//a/../following-sibling::*", "//namespace::*", "/a[id('1')]", "/a[last()] | //b",
          "count(//*)", "string(/a)"}) {
        EXPECT_FALSE(mayLookAtAttributes(expression)) << expression;
    }
}

}  // namespace intake
