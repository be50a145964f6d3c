#include <ZemTokenInterface.h>

#include <algorithm>

namespace Zem {

namespace {

bool isNameCharacter(QChar c)
{
    return c.isLetterOrNumber() || QStringView(u"._-+\\").contains(c);
}

bool isBracket(QChar c)
{
    return c == u'[' || c == u']';
}

bool isIndex(QStringView index)
{
    return !index.isEmpty() && std::none_of(index.begin(), index.end(), isBracket);
}

} // namespace

TokenInterface::~TokenInterface() = default;

unsigned int TokenInterface::getModifiedCounter(QString const &) const
{
    return 0;
}

ChangeLog::Log TokenInterface::getTokenChangeLog() const
{
    return {};
}

bool TokenInterface::parseToken(QString const &text, QString *name, QString *index)
{
    auto const nameEnd = std::find_if_not(text.begin(), text.end(), isNameCharacter);
    QStringView const bareName = QStringView(text).first(nameEnd - text.begin());
    QStringView rest = QStringView(text).sliced(bareName.size());
    if (bareName.isEmpty()) {
        return false;
    }
    if (!rest.isEmpty()) {
        if (rest.size() < 2 || !rest.startsWith(u'[') || !rest.endsWith(u']')) {
            return false;
        }
        rest = rest.sliced(1, rest.size() - 2);
        if (!isIndex(rest)) {
            return false;
        }
    }
    // The text may be one of the results: both are made before either is set.
    QString const nameText = bareName.toString();
    QString const indexText = rest.toString();
    if (name) {
        *name = nameText;
    }
    if (index) {
        *index = indexText;
    }
    return true;
}

} // namespace Zem
