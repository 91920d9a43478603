#include "tests/platform/windows/ComCalls.h"

namespace intake {

HRESULT ComCalls::enter(const std::string& call) {
    text_.append(call).append("\n");
    return ++count_ == failing_ ? FAILURE : S_OK;
}

}  // namespace intake
