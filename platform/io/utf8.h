// utf8.h: texts as UTF-8 bytes.
#pragma once

#include <QtCore/QString>

#include <cstddef>

namespace Zem::IO::Utf8 {

/// The number of bytes that encode() writes. An unpaired surrogate counts as U+FFFD, here and there.
std::size_t size(QStringView text) noexcept;
void encode(QStringView text, char *bytes) noexcept;

/// False, and `text` is left alone, when the bytes are no valid UTF-8. Every character is kept, a leading U+FEFF too.
bool decode(char const *bytes, std::size_t size, QString *text);

} // namespace Zem::IO::Utf8
