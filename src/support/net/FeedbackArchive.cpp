#include "support/net/FeedbackArchive.h"

#include <QCoreApplication>
#include <QLibrary>

namespace {

using Zip = void (*)(const std::vector<FeedbackFile>& files, const ArchiveProgress& progress, QString& error,
                     QByteArray& bytes);

/// The module beside the program's libraries, or beside the program.
QLibrary& loadedModule()
{
    static QLibrary module;
    for (const char* folder : {"/../lib/", "/"}) {
        if (module.isLoaded())
            break;
        module.setFileName(QCoreApplication::applicationDirPath() + QLatin1String(folder) +
                           QLatin1String("lumivar_archive"));
        module.load();
    }
    return module;
}

} // namespace

QByteArray zipped(const std::vector<FeedbackFile>& files, const ArchiveProgress& progress, QString* error)
{
    QLibrary& module = loadedModule();
    const auto zip = reinterpret_cast<Zip>(module.resolve("lumivarZip"));
    QByteArray bytes;
    if (zip)
        zip(files, progress, *error, bytes);
    else
        *error = module.errorString();
    return bytes;
}
