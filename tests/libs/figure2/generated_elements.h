// generated_elements.h: rapidcheck makes elements of every type with any state that a file can hold.
#pragma once

#include <ZemFig2Element.h>
#include <ZemFig2Group.h>

#include <memory>
#include <span>

namespace Zem::Fig2 {

/// An element of the type, made from random values; groups get up to three children of at most `depth` levels. To be
/// called inside rc::check.
std::unique_ptr<Element> generateElement(Element::Type_t type, int depth = 2);

/// The types that can be made, groups apart, and those of them that have a text form.
std::span<Element::Type_t const> leafTypes();
std::span<Element::Type_t const> textTypes();

/// Any type that is no group.
Element::Type_t generateLeafType();
/// One of those that have a text form.
Element::Type_t generateTextType();

} // namespace Zem::Fig2
