#include "workbench/cli/received_text.h"

namespace workbench {

std::string receivedText(std::string_view text) {
    std::string received;
    bool isLiteral = false;
    for (const char sign : text) {
        if (sign == '|' && !isLiteral) break;
        isLiteral = sign == '\\' && !isLiteral;
        if (!isLiteral) received += sign;
    }
    return received;
}

}  // namespace workbench
