// SPDX-License-Identifier: Apache-2.0
// faultpeer server <port of NATS> <patience, ms>       a server with changes going on, until "stop"
// faultpeer client <address> <patience, ms>            a client of one
//
// Beside a test, which may keep it from running, or give it another time of day. Says "ready", and answers
// "tell" by one line: how many occurrences were sent or heard, and what users have noticed.
#include <apps/common/commandreader.h>
#include <tests/apps/nats/faultstage.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDateTime>

#include <cstdio>

namespace {

void Say(const QString& line) {
    std::printf("%s\n", line.toUtf8().constData());
    std::fflush(stdout);
}

void Tell(const FaultStage& stage) {
    Say(QStringLiteral("sent %1 heard %2 doubled %3 missed %4 losses %5 told %6 established %7 time %8")
            .arg(stage.CountSent())
            .arg(stage.LastHeard())
            .arg(stage.CountDoubled())
            .arg(stage.CountMissed())
            .arg(stage.CountLosses())
            .arg(stage.CountTold())
            .arg(stage.AreAllEstablished() ? 1 : 0)
            .arg(QDateTime::currentSecsSinceEpoch()));
}

}  // namespace

int main(int argc, char** argv) {
    QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    if (words.size() != 4) return 2;
    FaultStage stage;
    stage.SetPatience(FaultStage::Time(words[3].toInt()));
    if (words[1] == QLatin1String("server")) {
        nats::NatsOptions options;
        options.servers = {{QStringLiteral("127.0.0.1"), words[2].toInt()}};
        if (!stage.StartServer(options)) return 1;
        stage.SetChanging(true);
    } else if (!stage.AddClient(words[2])) {
        return 1;
    }
    const CommandReader reader(
        [&stage](const QString& line) {
            if (line == QLatin1String("stop")) stage.SetChanging(false);
            Tell(stage);
        },
        &QCoreApplication::quit);
    Say(QStringLiteral("ready"));
    return QCoreApplication::exec();
}
