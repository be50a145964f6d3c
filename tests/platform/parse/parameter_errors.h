// parameter_errors.h: what reading a bad parameter string says.
#pragma once

#include <ZemParse.h>

#include <functional>

namespace Zem::Test {

/// The text of the ParamError that `action` throws; empty when it throws none.
inline QString paramError(std::function<void()> const &action)
{
    try {
        action();
    } catch (ParamError const &error) {
        return error.getText();
    }
    return QString();
}

} // namespace Zem::Test
