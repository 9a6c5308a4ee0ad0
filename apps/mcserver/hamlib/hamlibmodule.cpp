// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/hamlib/hamlibmodule.h>

#include <apps/mcserver/hamlib/irig.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

std::unique_ptr<IRigMaker> hamlibmodule::Load(const HamlibSettings& settings, QString* error) {
    // Beside the libraries, wherever all of it was installed to.
    const QDir programs(QCoreApplication::applicationDirPath());
    const QString file = QDir::cleanPath(
        programs.absoluteFilePath(QStringLiteral(MCS_MODULES_BESIDE_PROGRAMS "/mcserver-hamlib.so")));
    if (!QFileInfo::exists(file)) {
        *error = QStringLiteral("what knows Hamlib is not installed: there is no '%1'").arg(file);
        return nullptr;
    }
    QLibrary library(file);
    library.setLoadHints(QLibrary::PreventUnloadHint);  // a receiver that hangs outlives who asked for it
    const auto create = reinterpret_cast<Create>(library.resolve(EntryPoint));
    if (create == nullptr) {
        *error = library.errorString().simplified();
        return nullptr;
    }
    return std::unique_ptr<IRigMaker>(create(MCSERVER_VERSION, settings, error));
}
