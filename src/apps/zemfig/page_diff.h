// page_diff.h: in what two pages differ.
#pragma once

#include "facts.h"
#include "page_look.h"

namespace Zem::Zemfig {

/// The difference of two pages, as facts: "equal" first, then only what differs. Elements are the same when they have
/// the same type and name; the others when they are of the same type, in their order.
struct PageDifference
{
    bool isEqual = true;
    Facts facts;
};

PageDifference compare(PageLook const &a, PageLook const &b);

/// Both pages on one: what is equal pale, what is darker in `a` in one colour, what is darker in `b` in another, and
/// below what the colours mean, with these names.
QImage differencePicture(PageLook const &a, QString const &nameOfA, PageLook const &b, QString const &nameOfB);

} // namespace Zem::Zemfig
