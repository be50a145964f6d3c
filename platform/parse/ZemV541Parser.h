// ZemV541Parser.h: reads the parameter strings of an older release; nothing writes them any more.
#pragma once

#include <ZemColor.h>
#include <ZemParse.h>
#include <ZemVec.h>

#include <QtCore/QString>

namespace Zem {

/// The older form is "key=value;" in a row, texts in double quotes: see docs/formats/parameter-string.md. Arguments,
/// results, consumption of entries and errors are those of Parse. All operations may be called from any thread.
class V541Parser
{
public:
    V541Parser() = delete;

    static bool parameterExists(QString const &parameters, QString const &key);
    static bool getBool(QString &parameters, QString const &key);
    static double getDouble(QString &parameters, QString const &key, double min, double max);
    static QString getString(QString &parameters, QString const &key);
    static Color getColor(QString &parameters, QString const &key);
    static BaVec2d<double> getVec2d(QString &parameters, QString const &key);
};

} // namespace Zem
