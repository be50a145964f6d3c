// ZemNumString.h: names in the order people expect: "stage 9" before "stage 10".
#pragma once

#include <QtCore/QString>

namespace Zem {

/// A name ordered by its embedded numbers: runs of the digits 0 to 9 compare by value, of any length, everything else
/// by code unit. Names that differ only in leading zeros are ordered as texts, so the order is total.
/// A plain value; several threads may read it.
class NumString
{
public:
    explicit NumString(QString const &name) : name_(name) {}

    QString const &getName() const noexcept { return name_; }

    bool operator<(NumString const &other) const noexcept;
    bool operator==(NumString const &) const = default;

private:
    QString name_;
};

} // namespace Zem
