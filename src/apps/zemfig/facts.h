// facts.h: what the command tells of something, for people and for programs.
#pragma once

#include <QtCore/QJsonArray>
#include <QtCore/QJsonObject>
#include <QtCore/QString>

#include <utility>
#include <vector>

namespace Zem::Zemfig {

/// Named values in the order in which they are told. Lists of objects become a line each, their "name" in front.
class Facts
{
public:
    void add(QString const &key, QJsonValue const &value) { facts_.emplace_back(key, value); }
    /// Empty texts, lists and objects tell nothing.
    void addUnlessEmpty(QString const &key, QJsonValue const &value);

    QJsonObject toJson() const;
    /// "key: value" lines; "_" of keys is a blank there, and long texts of lists are cut short.
    QString toText() const;

private:
    std::vector<std::pair<QString, QJsonValue>> facts_;
};

} // namespace Zem::Zemfig
