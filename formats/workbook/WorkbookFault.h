#pragma once

#include <stdexcept>

namespace intake {

/// Why a workbook cannot be read. What is thrown of a part goes on from 'its part "NAME" ' or 'the
/// sheet "NAME" ', which whoever reads the part puts before it; what is thrown of the whole goes on
/// from 'The workbook "PATH" cannot be read: '.
class WorkbookFault : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace intake
