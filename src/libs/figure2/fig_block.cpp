#include "fig_block.h"

namespace Zem::Fig2 {

void throwIllegalNumber(unsigned int number)
{
    throw IO::StreamException(translate("Fig_Block_err", "illegal value %1 in block").arg(number));
}

void throwWrongBlockVersion()
{
    throw IO::StreamException(translate("Fig_BlockVersion_Error", "wrong block version"));
}

void throwWrapped(char const *context, char const *text, Exception const &cause)
{
    throw IO::StreamException(translate(context, text).arg(cause.getText()));
}

} // namespace Zem::Fig2
