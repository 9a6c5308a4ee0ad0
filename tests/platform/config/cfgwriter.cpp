// SPDX-License-Identifier: Apache-2.0
// A process that uses a configuration file beside others. The first argument is the file, the second is what
// to do with it.
#include <platform/app/errorhandler.h>
#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>
#include <platform/config/store/cfglock.h>

#include <tests/platform/config/uniformtext.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QElapsedTimer>
#include <QtCore/QStringList>

#include <chrono>
#include <cstdio>
#include <memory>

#ifdef Q_OS_WIN
#include <fcntl.h>
#include <io.h>
#endif

namespace {

std::unique_ptr<ICfg> Root() {
    return std::unique_ptr<ICfg>(CfgCenter::Instance().OpenRoot());
}

/// \return the arguments behind the one that says what to do.
QStringList Details() {
    return QCoreApplication::arguments().mid(3);
}

/// \a text as it is, with its own ends of lines.
void Print(const QString& text) {
#ifdef Q_OS_WIN
    ::_setmode(::_fileno(stdout), _O_BINARY);
#endif
    std::fputs(text.toUtf8().constData(), stdout);
    std::fputc('\n', stdout);
    std::fflush(stdout);
}

/// key, fallback: prints the content.
int Get() {
    Print(Root()->ReadString(Details().value(0), Details().value(1)));
    return 0;
}

/// key, content: 0 if it is in the file.
int Set() {
    const std::unique_ptr<ICfg> root = Root();
    root->WriteString(Details().value(0), Details().value(1));
    return root->CommitKey(Details().value(0)) ? 0 : 1;
}

/// 0 if it could be held; otherwise prints why not.
int Hold() {
    QString error;
    if (CfgCenter::Instance().HoldStore(&error)) return 0;
    Print(error);
    return 1;
}

/// key, content: writes, and leaves the rest to the end of the process.
int SetUncommitted() {
    Root()->WriteString(Details().value(0), Details().value(1));
    return 0;
}

/// name, count: commits so many keys of its own, one by one, and a key that it shares, once "go" is read.
int Fill() {
    const QString name = Details().value(0);
    const std::unique_ptr<ICfg> root = Root();
    Print(QStringLiteral("ready"));
    if (std::getchar() == EOF) return 2;
    for (int i = 0; i < Details().value(1).toInt(); ++i) {
        root->WriteInt(QStringLiteral("%1/key%2").arg(name).arg(i), i);
        root->WriteString(QStringLiteral("shared"), name);
        if (!root->CommitKey(QStringLiteral("shared"))) return 1;
    }
    return 0;
}

/// name, other, count: counts its own key up, always in as many characters, and sees the other's never go
/// down.
int Count() {
    const QString name = Details().value(0);
    const QString other = Details().value(1);
    const std::unique_ptr<ICfg> root = Root();
    Print(QStringLiteral("ready"));
    if (std::getchar() == EOF) return 2;
    int seen = 0;
    for (int i = 0; i < Details().value(2).toInt(); ++i) {
        root->WriteInt(name, 1000 + i);
        if (!root->CommitKey(name)) return 1;
        const int now = root->ReadInt(other, 0);
        if (now < seen) return 3;
        seen = now;
    }
    return 0;
}

/// first: replaces long texts without end, and prints a line for each time.
int Churn() {
    QElapsedTimer opening;
    opening.start();
    const std::unique_ptr<ICfg> root = Root();
    Print(QStringLiteral("opened %1").arg(opening.elapsed()));
    for (int round = Details().value(0).toInt();; ++round) {
        for (int key = 0; key < uniformtext::Keys; ++key)
            root->WriteString(uniformtext::Key(key), uniformtext::Make(round));
        if (!root->CommitKey(QString())) return 1;
        Print(QStringLiteral("committed %1").arg(round));
    }
}

/// Takes the lock of those that write, and keeps it until it is killed or a line is read.
int Lock() {
    CfgLock lock(CfgCenter::Instance().GetStorePath() + QStringLiteral(".writer"));
    if (lock.Try() != CfgLock::EOutcome::Held) return 1;
    Print(QStringLiteral("locked"));
    return std::getchar() == EOF ? 2 : 0;
}

}  // namespace

int main(int argc, char** argv) {
    {
        // As in a program that looks at its arguments before it knows which kind of application it is.
        const QCoreApplication forArguments(argc, argv);
        CfgCenter::Instance();
    }
    const QCoreApplication application(argc, argv);
    ErrorHandler::Instance().SetSink([](const TraceRecord& record) {
        std::fputs((record.message + QLatin1Char('\n')).toUtf8().constData(), stderr);
    });
    CfgCenter::Instance().SetStorePath(QCoreApplication::arguments().value(1));
    // It has nothing better to do, and others may be held up by a slow disk.
    CfgCenter::Instance().SetPatience(std::chrono::seconds(30));
    const QString what = QCoreApplication::arguments().value(2);
    if (what == QLatin1String("get")) return Get();
    if (what == QLatin1String("set")) return Set();
    if (what == QLatin1String("set-uncommitted")) return SetUncommitted();
    if (what == QLatin1String("hold")) return Hold();
    if (what == QLatin1String("fill")) return Fill();
    if (what == QLatin1String("count")) return Count();
    if (what == QLatin1String("churn")) return Churn();
    if (what == QLatin1String("lock")) return Lock();
    return 64;
}
