// fig_element_tokens.h: the tokens that every element offers about itself.
// Layer: tokens. Internal to the library.
#pragma once

namespace Zem::Fig2 {

/// Fills the table that all ElementTokenInterfaces share, so that later it is only read.
void registerElementTokens();

} // namespace Zem::Fig2
