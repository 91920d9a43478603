#pragma once

#include "platform/EndMark.h"
#include "platform/linux/workbook/ByteSource.h"
#include "platform/linux/workbook/XmlEvents.h"

namespace intake {

/// Reads a part by libxml2. Throws WorkbookFault when it is not well-formed or has a DTD, which is
/// never read, and whatever `events` throws.
void parsePart(ByteSource& part, XmlEvents& events, const EndMark& endMark);

}  // namespace intake
