// page_toml_values.h: what stands in a TOML file as values of the library.
#pragma once

#include "page_schema.h"
#include "toml_parser.h"

#include <ZemVec.h>

namespace Zem::Zemfig {

QString textOf(std::string_view view);

/// From 1.
int lineOf(toml::node const &node);

/// The name of a TOML type for people.
QString typeOf(toml::node const &node);

/// False for what is no finite number, or no list of two of them.
bool readNumber(toml::node const &node, double *number);
bool readVector(toml::node const &node, BaVec2d<double> *vector);

/// The entry of a parameter string; empty when the value does not fit, and then `expected` tells what would.
QString makeEntry(Parameter const &parameter, toml::node const &node, QString *expected);

} // namespace Zem::Zemfig
