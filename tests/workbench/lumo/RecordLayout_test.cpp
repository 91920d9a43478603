#include "workbench/lumo/RecordLayout.h"

#include <gtest/gtest.h>

#include <initializer_list>

using lumo::Parameter;
using lumo::ParameterKind;
using lumo::ParameterTable;
using lumo::RecordLayout;

namespace {

ParameterTable table(std::initializer_list<ParameterKind> kinds) {
    ParameterTable parameters;
    for (const ParameterKind kind : kinds) {
        Parameter parameter;
        parameter.kind = kind;
        parameter.userDataSize = 12;
        parameters.add(parameter);
    }
    return parameters;
}

}  // namespace

TEST(RecordLayout, PutsNumbersSideBySideInFourBytesEach) {
    const RecordLayout layout(table(
        {ParameterKind::Int, ParameterKind::Bool, ParameterKind::Radio, ParameterKind::Float}));
    EXPECT_EQ(layout.offset(1), 0U);
    EXPECT_EQ(layout.offset(2), 4U);
    EXPECT_EQ(layout.offset(3), 8U);
    EXPECT_EQ(layout.offset(4), 12U);
    EXPECT_EQ(layout.size(), 16U);
}

TEST(RecordLayout, AlignsTheTextsToAPointer) {
    const RecordLayout layout(table({ParameterKind::Int, ParameterKind::String, ParameterKind::Int,
                                     ParameterKind::Container, ParameterKind::Text}));
    EXPECT_EQ(layout.offset(2), 8U);
    EXPECT_EQ(layout.offset(4), 24U);
    EXPECT_EQ(layout.offset(5), 32U);
}

TEST(RecordLayout, GivesAPushButtonNoSpace) {
    const RecordLayout layout(
        table({ParameterKind::Int, ParameterKind::PushButton, ParameterKind::Int}));
    EXPECT_EQ(layout.offset(3), 4U);
    EXPECT_EQ(layout.size(), 8U);
}

TEST(RecordLayout, GivesUserDataItsSizeOnEightBytes) {
    const RecordLayout layout(
        table({ParameterKind::Int, ParameterKind::UserData, ParameterKind::Int}));
    EXPECT_EQ(layout.offset(2), 8U);
    EXPECT_EQ(layout.offset(3), 20U);
    EXPECT_EQ(layout.size(), 24U);
}
