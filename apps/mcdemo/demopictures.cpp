// SPDX-License-Identifier: Apache-2.0
#include "demopictures.h"

#include <apps/common/childprogram.h>

#include <QtCore/QFile>
#include <QtCore/QProcessEnvironment>

#include <chrono>

namespace {

constexpr std::chrono::minutes PicturePatience(3);

QStringList PicturesIn(const QDir& folder) {
    return folder.entryList({QStringLiteral("console-*.png")}, QDir::Files, QDir::Name);
}

}  // namespace

DemoPictures DemoPictures::Take(const QString& console, const QStringList& arguments, const QDir& folder) {
    // Pictures of an earlier time would tell a lie.
    for (const QString& old : PicturesIn(folder))
        QFile::remove(folder.filePath(old));
    QProcessEnvironment inMemory = QProcessEnvironment::systemEnvironment();
    inMemory.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));  // there is no display
    ChildProgram child(ChildProgram::EErrors::WithOutput);
    child.SetEnvironment(inMemory);
    const ProgramOutcome outcome = child.Run(console, arguments, PicturePatience);
    DemoPictures taken;
    taken.names = PicturesIn(folder);
    if (outcome.code == 0 && !taken.names.isEmpty()) return taken;
    const QString said = QString::fromUtf8(outcome.output).trimmed();
    taken.problem = QStringLiteral("mcconsole does not show all its pages: %1")
                        .arg(said.isEmpty() ? QStringLiteral("it does not end in time") : said);
    return taken;
}
