#pragma once

#include <string>

#include "platform/windows/com/com.h"

namespace intake {

/// What stand-ins for a system's COM objects share: the calls that they got, the one of them that
/// is to fail, and how many objects are still referred to. Used on one thread; outlives the
/// objects.
class ComCalls {
public:
    static constexpr HRESULT FAILURE = E_ABORT;

    /// Notes a call, as a line of text. What the call has to return: FAILURE where it is to fail.
    HRESULT enter(const std::string& call);

    /// The `number`th call fails, counted from 1; none when there are fewer.
    void failAt(int number) { failing_ = number; }

    int count() const { return count_; }
    const std::string& text() const { return text_; }

    void objectMade() { ++living_; }
    void objectGone() { --living_; }

    /// Zero once everybody has released what he got.
    int living() const { return living_; }

private:
    std::string text_;
    int count_ = 0, failing_ = 0, living_ = 0;
};

}  // namespace intake
