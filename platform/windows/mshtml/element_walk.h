#pragma once

#include "platform/HtmlDocument.h"
#include "platform/windows/com/ComPointer.h"
#include "platform/windows/mshtml/mshtml_api.h"

namespace intake {

/// The first element of a document that matches, in document order; null where none does. Throws
/// PlatformError.
ComPointer<IHTMLElement> firstMatch(const ComPointer<IHTMLDocument3>& document,
                                    const HtmlDocument::Matches& matches);

}  // namespace intake
