// ZemMeasImportError.h: what a reader throws when a data file cannot be taken over.
#pragma once

#include <ZemError.h>

namespace Zem::Measurement {

/// A data file is not what it should be. The text is "file:line:column: reason" where a place can be named, or else
/// "file: reason"; lines and columns count from one, columns in characters. Like every Exception it may be passed
/// between threads.
class ImportError : public Exception
{
public:
    using Exception::Exception;
};

} // namespace Zem::Measurement
