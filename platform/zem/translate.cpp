#include <ZemTranslate.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QLocale>
#include <QtCore/QTranslator>

#include <memory>

namespace Zem {

namespace {

QStringList translationFolders()
{
    QStringList folders =
        QFile::decodeName(qgetenv("ZEM_TRANSLATIONS")).split(QDir::listSeparator(), Qt::SkipEmptyParts);
    QString const program = QCoreApplication::applicationDirPath();
    folders << program + QLatin1String("/translations") << program + QLatin1String("/../share/zem/translations");
    return folders;
}

bool loadFromFirstFolder(QTranslator *translator, QString const &name)
{
    for (QString const &folder : translationFolders()) {
        if (translator->load(QLocale(), name, QLatin1String("_"), folder)) {
            return true;
        }
    }
    return false;
}

} // namespace

QString translate(char const *context, char const *text)
{
    return QCoreApplication::translate(context, text);
}

void installTranslator(char const *name)
{
    QCoreApplication *application = QCoreApplication::instance();
    QString const library = QString::fromUtf8(name);
    // The application keeps the translators as its children, so it also knows what is loaded.
    if (!application || application->findChild<QTranslator *>(library, Qt::FindDirectChildrenOnly)) {
        return;
    }
    auto translator = std::make_unique<QTranslator>();
    translator->setObjectName(library);
    if (loadFromFirstFolder(translator.get(), library) && QCoreApplication::installTranslator(translator.get())) {
        translator.release()->setParent(application);
    }
}

} // namespace Zem
