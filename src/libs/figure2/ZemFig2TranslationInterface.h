// ZemFig2TranslationInterface.h: TranslationInterface, the application's names for data sources.
// Layer: services. One object for the process, set up on one thread before use.
#pragma once

#include <QtCore/QString>

namespace Zem::Fig2 {

/// Turns the token of a data source into a name for the user. The application derives from it and owns the one object.
class TranslationInterface
{
public:
    /// Throws ProgError when an object exists already.
    TranslationInterface();
    virtual ~TranslationInterface();
    TranslationInterface(TranslationInterface const &) = delete;
    TranslationInterface &operator=(TranslationInterface const &) = delete;

    /// What the user calls the source with this token.
    virtual QString getTokenDisplayName(QString const &token) const = 0;

    /// Null when the application has none. Not owned by the caller.
    static TranslationInterface const *getInterface();

private:
    static TranslationInterface const *_instance;
};

} // namespace Zem::Fig2
