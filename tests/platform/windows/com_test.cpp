// What the adapters to COM build on.

#include <gtest/gtest.h>

#include "platform/PlatformError.h"
#include "platform/windows/base/wide_text.h"
#include "platform/windows/com/BasicString.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/com/Variant.h"
#include "tests/platform/windows/BigAllocations.h"

namespace intake {
namespace {

/// What a step throws.
template <class Step>
PlatformError thrownBy(const Step& step) {
    try {
        step();
    } catch (const PlatformError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing is thrown";
    return {0, "", "", ""};
}

/// Leaves what an object that fails tells.
void tell(std::wstring source, std::wstring description) {
    ComPointer<ICreateErrorInfo> info;
    ASSERT_EQ(CreateErrorInfo(info.out()), S_OK);
    info->SetSource(source.data());
    info->SetDescription(description.data());
    SetErrorInfo(0, info.as<IErrorInfo>(IID_IErrorInfo).get());
}

TEST(ComErrors, AreThrownWithWhatTheObjectTold) {
    tell(L"League", L"\u00c9t\u00e9");
    const PlatformError error = thrownBy([] { checkCom(E_ABORT); });
    EXPECT_EQ(error.code(), 0x80004004U);
    EXPECT_NE(error.meaning(), "");
    EXPECT_EQ(error.source(), "League");
    EXPECT_EQ(error.description(), "\xC3\x89t\xC3\xA9");
}

TEST(ComErrors, AreNotThrownForSuccesses) {
    EXPECT_EQ(checkCom(S_FALSE), S_FALSE);
}

TEST(ComErrors, DoNotTellOfFailuresThatWereAnswers) {
    tell(L"League", L"There is no such team");
    EXPECT_FALSE(succeeded(E_FAIL));
    EXPECT_TRUE(succeeded(S_FALSE));
    EXPECT_EQ(thrownBy([] { checkCom(E_ABORT); }).description(), "");
}

TEST(ComErrors, WithoutATextOfTheSystemHaveOneOfTheirNumber) {
    EXPECT_EQ(comMeaning(0x80049999), "IDispatch error #38809");
    EXPECT_EQ(comMeaning(0xA000BEEF), "Unknown error 0xA000BEEF");
}

TEST(ComErrors, HaveNoLineEndBehindTheirText) {
    const std::string text = comMeaning(static_cast<uint32_t>(E_NOTIMPL));
    ASSERT_NE(text, "");
    EXPECT_GT(text.back(), ' ');
}

TEST(ComObjects, ThatAreMissingAreInvalidPointers) {
    const ComPointer<IUnknown> none;
    EXPECT_EQ(thrownBy([&] { none->AddRef(); }).code(), static_cast<uint32_t>(E_POINTER));
    EXPECT_EQ(thrownBy([&] { none.as<IStream>(IID_IStream); }).code(),
              static_cast<uint32_t>(E_POINTER));
}

TEST(ComObjects, GiveNoInterfaceThatTheyDoNotHave) {
    ComPointer<ICreateErrorInfo> object;
    ASSERT_EQ(CreateErrorInfo(object.out()), S_OK);
    EXPECT_TRUE(object.as<IErrorInfo>(IID_IErrorInfo));
    EXPECT_EQ(thrownBy([&] { object.as<IStream>(IID_IStream); }).code(),
              static_cast<uint32_t>(E_NOINTERFACE));
}

TEST(ComTexts, ThatCannotBeMadeAreWantOfMemory) {
    constexpr size_t MORE_THAN_THERE_CAN_BE = 0x80000000;
    EXPECT_EQ(thrownBy([] {
                  const BasicString text(std::wstring_view(L"", MORE_THAN_THERE_CAN_BE));
              }).code(),
              static_cast<uint32_t>(E_OUTOFMEMORY));
}

TEST(ComTexts, AreFreedWithTheirOwners) {
    const size_t before = BigAllocations::living();
    {
        const std::string big(BigAllocations::CHARACTERS, 'x');
        BasicString text(big);
        Variant first;
        first.setText(big);
        Variant second;
        second.setText(big);
        EXPECT_EQ(BigAllocations::living(), before + 3);
        text.out();
        first.setInteger(1);
        EXPECT_EQ(BigAllocations::living(), before + 1);
    }
    EXPECT_EQ(BigAllocations::living(), before);
}

TEST(WideTexts, ComeFromUtf8AndBecomeIt) {
    const std::string text = "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x8F\x86";
    EXPECT_EQ(toWide(text), L"a\u00e9\u20ac\U0001F3C6");
    EXPECT_EQ(toUtf8(toWide(text)), text);
    EXPECT_EQ(toWide(""), L"");
    EXPECT_EQ(toUtf8(L""), "");
}

TEST(WideTexts, KeepTheirZeros) {
    EXPECT_EQ(toUtf8(std::wstring_view(L"a\0b", 3)), std::string("a\0b", 3));
}

TEST(WideTexts, ShowWhatIsNoText) {
    EXPECT_EQ(toUtf8(L"a\xD83C"), "a\xEF\xBF\xBD");
    EXPECT_EQ(toWide("a\xFF"), L"a\uFFFD");
}

TEST(WideTexts, BecomeTextsOfACodePage) {
    constexpr unsigned ISO_8859_1 = 28591;
    std::string out = "kept ";
    appendNarrow(L"\u00e9\u0416", ISO_8859_1, out);
    EXPECT_EQ(out, "kept \xE9?");
    EXPECT_EQ(toWide("\xE9", ISO_8859_1), L"\u00e9");
}

TEST(WideTexts, OfAsciiAreTheSameInTheSystemsCodePage) {
    std::string out;
    appendNarrow(L"summer", CP_ACP, out);
    EXPECT_EQ(out, "summer");
    EXPECT_EQ(toWide("summer", CP_ACP), L"summer");
}

}  // namespace
}  // namespace intake
