// SPDX-License-Identifier: Apache-2.0
#include "demo.h"

#include "demopictures.h"
#include "forpeople.h"
#include "narrator.h"

#include <apps/common/display.h>
#include <apps/common/eventwait.h>
#include <apps/common/terminal.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFile>

#include <utility>

namespace {

constexpr std::chrono::seconds Patience(60);  // for whatever is to happen, beside a compiler too
constexpr std::chrono::seconds StopTime(5);   // that a program gets to end by itself
constexpr std::chrono::milliseconds AskInterval(50);

constexpr char ModuleConfiguration[] =
    "[GTS]\n"
    "ModuleCount=1\n"
    "Module0\\Index=0\n"
    "Module0\\Name=ADAM-6051\n"
    "Module0\\Address=127.0.0.1\n"
    "Module0\\PollInterval=20\n"
    "Module0\\Assignments\\AssignmentCount=12\n"
    "Module0\\Assignments\\DI_3=121500000\n";

/// \a program stands beside this one.
QString PathOf(const char* program) {
    return QDir(QCoreApplication::applicationDirPath()).filePath(QString::fromLatin1(program));
}

/// All that \a program says until its end, errors too.
QString OutputOf(const char* program, const QStringList& arguments) {
    ChildProgram child(ChildProgram::EErrors::WithOutput);
    return QString::fromUtf8(child.Run(PathOf(program), arguments, Patience).output);
}

const QString& Alpha() {
    static const QString name = QStringLiteral("alpha");
    return name;
}

const QString& Bravo() {
    static const QString name = QStringLiteral("bravo");
    return name;
}

}  // namespace

Demo::Demo(const QString& pictures, std::function<bool()> isStopped)
    : m_pictures(QDir(pictures).absolutePath()),
      m_isStopped(std::move(isStopped)),
      m_hasWindows(HasDisplay() && GetDisplayProblem().isEmpty()) {}

bool Demo::Fail(const QString& what) {
    terminal::Complain(what, 1);
    return false;
}

bool Demo::Run() {
    using Step = bool (Demo::*)();
    bool isGood = m_directory.isValid();
    for (const Step step :
         {&Demo::StartModule, &Demo::StartCluster, &Demo::StartServer, &Demo::StartClients, &Demo::ShowStatus,
          &Demo::BecomeMaster, &Demo::RefuseAndAllow, &Demo::RefuseForTheMaster, &Demo::BlankAFrequency,
          &Demo::KillANode, &Demo::KillAndRestart, &Demo::ShowWindows})
        isGood = isGood && !m_isStopped() && (this->*step)();
    return End() && isGood;
}

/// One input module, whose input 3 is wired to a transmitter on the frequency that is tuned to later.
bool Demo::StartModule() {
    // Where nobody has logged in there is no such directory, and programs with windows complain.
    if (qEnvironmentVariableIsEmpty("XDG_RUNTIME_DIR"))
        qputenv("XDG_RUNTIME_DIR", m_directory.path().toLocal8Bit());
    if (!m_module.Start(PathOf("dimodule"), {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0")}))
        return Fail(QStringLiteral("dimodule does not start"));
    const QString line = m_module.WaitForLine(QStringLiteral("listening on "), Patience);
    if (line.isNull()) return Fail(QStringLiteral("dimodule does not listen"));
    // In place of the port of all modules, which takes rights that a demonstration does not have.
    qputenv("MCS_MODBUS_PORT", line.mid(line.lastIndexOf(QLatin1Char(':')) + 1).toLatin1());
    QFile file(m_directory.filePath(QStringLiteral("server.ini")));
    return (file.open(QIODevice::WriteOnly) && file.write(ModuleConfiguration) > 0) ||
           Fail(QStringLiteral("no configuration can be written"));
}

bool Demo::StartCluster() {
    if (m_clusterScript.isEmpty()) return true;
    narrator::Chapter(QStringLiteral("Three nodes of NATS start, with users, TLS and a disk of their own"));
    QString error;
    if (!m_cluster.Start(m_clusterScript, m_directory.filePath(QStringLiteral("cluster")), &error))
        return Fail(error);
    narrator::Hear(QStringLiteral("nats"), QStringLiteral("listening on ") + m_cluster.Hosts());
    return true;
}

QStringList Demo::ServerArguments() const {
    QStringList arguments{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(m_port),
                          QStringLiteral("--config"), m_directory.filePath(QStringLiteral("server.ini"))};
    if (!m_hasWindows) arguments << QStringLiteral("--headless");
    if (!m_clusterScript.isEmpty())
        arguments << QStringLiteral("--nats") << m_cluster.Hosts() << QStringLiteral("--station")
                  << DemoCluster::Station() << QStringLiteral("--insecure");
    return arguments;
}

bool Demo::StartServer() {
    const bool isFirst = m_port == 0;
    if (isFirst) narrator::Chapter(QStringLiteral("A server starts, with a simulated direction finder"));
    if (!m_clusterScript.isEmpty()) m_server.SetEnvironment(m_cluster.EnvironmentOf(DemoCluster::Station()));
    if (!m_server.Start(PathOf("mcserver"), ServerArguments()))
        return Fail(QStringLiteral("mcserver does not start"));
    const QString line = m_server.WaitForLine(QStringLiteral("listening on "), Patience);
    if (line.isNull()) return Fail(QStringLiteral("mcserver does not listen"));
    m_port = line.mid(line.lastIndexOf(QLatin1Char(':')) + 1).toInt();
    narrator::Hear(QStringLiteral("server"), line);
    return !isFirst || !m_hasWindows || StartConsole();
}

QStringList Demo::ConsoleArguments(const QStringList& more) const {
    return QStringList{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(m_port),
                       QStringLiteral("--config"), m_directory.filePath(QStringLiteral("console.ini"))} +
           more;
}

bool Demo::StartConsole() {
    narrator::Act(QStringLiteral("operator"), QStringLiteral("mcconsole"));
    return m_console.Start(PathOf("mcconsole"), ConsoleArguments({})) ||
           Fail(QStringLiteral("mcconsole does not start"));
}

QString Demo::Operator(const QStringList& arguments) const {
    const QStringList server{QStringLiteral("--connect"), QStringLiteral("127.0.0.1:%1").arg(m_port)};
    return OutputOf("mctree", server + arguments);
}

bool Demo::HearConnected(ChildProgram& client, const QString& who, QString* name) {
    const QString beginning = QStringLiteral("connected as ");
    const QString line = client.WaitForLine(beginning, Patience);
    if (line.isNull()) return Fail(who + QStringLiteral(" does not connect"));
    narrator::Hear(who, line);
    *name = line.mid(beginning.size());
    return true;
}

bool Demo::StartClients() {
    narrator::Chapter(QStringLiteral("Two clients connect; each gets an MpxORV of its own"));
    const QString port = QString::number(m_port);
    const bool isOverNats = !m_clusterScript.isEmpty();
    const QString address =
        isOverNats ? QStringLiteral("natss://%1/%2").arg(m_cluster.Hosts(), DemoCluster::Station())
                   : QStringLiteral("127.0.0.1");
    if (isOverNats) narrator::Hear(QStringLiteral("both"), QStringLiteral("connect to ") + address);
    for (ChildProgram* client : {&m_alpha, &m_bravo}) {
        const QString& who = client == &m_alpha ? Alpha() : Bravo();
        if (isOverNats) client->SetEnvironment(m_cluster.EnvironmentOf(QStringLiteral("operator")));
        if (!client->Start(PathOf("mcdemo"), {QStringLiteral("--client"), who, QStringLiteral("--address"),
                                              address, QStringLiteral("--port"), port}))
            return Fail(who + QStringLiteral(" does not start"));
    }
    QString alphaName;
    return HearConnected(m_alpha, Alpha(), &alphaName) && HearConnected(m_bravo, Bravo(), &m_bravoName);
}

bool Demo::ShowStatus() {
    narrator::Chapter(QStringLiteral("What the server shows everybody"));
    const QString path = QStringLiteral("/MultiChannelServer/Status");
    const QString all = path + QStringLiteral("/*");
    narrator::Act(QStringLiteral("operator"), QStringLiteral("mctree get '%1'").arg(all));
    const auto isReady = [&] {
        return Operator({QStringLiteral("get"), path + QStringLiteral("/BootState")})
            .contains(QLatin1String("Ready"));
    };
    if (!eventwait::Until(isReady, Patience, AskInterval))
        return Fail(QStringLiteral("the device does not boot"));
    narrator::Quote(forpeople::Rows(Operator({QStringLiteral("get"), all})));
    return true;
}

bool Demo::Ask(ChildProgram& client, const QString& who, const QString& line, const QString& beginning) {
    narrator::Act(who, line);
    client.Say(line.toUtf8());
    const QString answer = client.WaitForLine(QStringLiteral("answer "), Patience).mid(7);
    narrator::Hear(who, answer);
    return answer.startsWith(beginning) ||
           Fail(QStringLiteral("'%1' was to be answered %2").arg(line, beginning));
}

bool Demo::BecomeMaster() {
    narrator::Chapter(QStringLiteral("One becomes job master and tunes"));
    return Ask(m_alpha, Alpha(), QStringLiteral("master"), QStringLiteral("done")) &&
           Ask(m_alpha, Alpha(), QStringLiteral("tune 121500000"), QStringLiteral("done"));
}

bool Demo::RefuseForTheMaster() {
    narrator::Chapter(QStringLiteral("There is one master at a time"));
    return Ask(m_bravo, Bravo(), QStringLiteral("master"), QStringLiteral("refused"));
}

/// The module is looked at now and then: asks until what has changed there is known.
bool Demo::AskUntilDone(ChildProgram& client, const QString& who, const QString& line) {
    narrator::Act(who, line);
    QString answer;
    const auto isDone = [&] {
        client.Say(line.toUtf8());
        answer = client.WaitForLine(QStringLiteral("answer "), Patience).mid(7);
        return answer.startsWith(QLatin1String("done"));
    };
    const bool isGood = eventwait::Until(isDone, Patience, AskInterval);
    narrator::Hear(who, answer);
    return isGood || Fail(QStringLiteral("'%1' was to be answered done").arg(line));
}

bool Demo::BlankAFrequency() {
    narrator::Chapter(QStringLiteral("A ground transmitter keys: nobody may use its frequency"));
    narrator::Act(QStringLiteral("module"), QStringLiteral("key 3"));
    m_module.Say("key 3");
    const QString lost = m_alpha.WaitForLine(QStringLiteral("answer ended: "), Patience);
    if (lost.isNull()) return Fail(QStringLiteral("alpha keeps a frequency that is blanked"));
    narrator::Hear(Alpha(), lost.mid(7));
    if (!Ask(m_alpha, Alpha(), QStringLiteral("tune 121500000"),
             QStringLiteral("refused: 121.5 MHz is blanked")))
        return false;
    narrator::Act(QStringLiteral("module"), QStringLiteral("release 3"));
    m_module.Say("release 3");
    return AskUntilDone(m_alpha, Alpha(), QStringLiteral("tune 121500000"));
}

bool Demo::RefuseAndAllow() {
    narrator::Chapter(
        QStringLiteral("A policy refuses, the operator switches it on, the same request is granted"));
    if (!Ask(m_bravo, Bravo(), QStringLiteral("bit"), QStringLiteral("refused: needs MayBIT"))) return false;
    const QString path =
        QStringLiteral("/MultiChannelServer/DynamicMpxORVs/%1/Policy/MayBIT").arg(m_bravoName);
    narrator::Act(QStringLiteral("operator"), QStringLiteral("mctree set %1 true").arg(path));
    narrator::Quote(Operator({QStringLiteral("set"), path, QStringLiteral("true")}));
    if (!Ask(m_bravo, Bravo(), QStringLiteral("bit"), QStringLiteral("done"))) return false;
    return true;
}

bool Demo::KillANode() {
    if (m_clusterScript.isEmpty()) return true;
    narrator::Chapter(QStringLiteral(
        "The node that all are connected to is killed; they go on by another one, and lose nothing"));
    narrator::Act(QStringLiteral("operator"),
                  QStringLiteral("kill -9 nats-server, ") + m_cluster.FirstNode());
    m_cluster.KillFirstNode();
    return AskUntilDone(m_alpha, Alpha(), QStringLiteral("tune 121500000"));
}

bool Demo::HearThemLoseTheServer() {
    for (ChildProgram* client : {&m_alpha, &m_bravo}) {
        const QString& who = client == &m_alpha ? Alpha() : Bravo();
        if (client->WaitForLine(QStringLiteral("lost"), Patience).isNull())
            return Fail(who + QStringLiteral(" does not notice"));
        narrator::Hear(who, QStringLiteral("lost the server; what is shown is marked as stale"));
    }
    return true;
}

bool Demo::KillAndRestart() {
    narrator::Chapter(
        QStringLiteral("The server is killed and restarted; the clients come back by themselves"));
    narrator::Act(QStringLiteral("operator"), QStringLiteral("kill -9 mcserver"));
    m_server.Kill();
    if (!HearThemLoseTheServer()) return false;
    narrator::Act(QStringLiteral("operator"), QStringLiteral("mcserver, once more"));
    QString name;
    return StartServer() && HearConnected(m_alpha, Alpha(), &name) && HearConnected(m_bravo, Bravo(), &name);
}

bool Demo::ShowWindows() {
    return m_hasWindows ? LeaveWindows() : TakePictures();
}

bool Demo::LeaveWindows() {
    narrator::Chapter(QStringLiteral("The windows are yours: close the operator's, or press Ctrl+C, to end"));
    while (!m_isStopped() && m_console.IsRunning())
        eventwait::Until([this] { return m_isStopped() || !m_console.IsRunning(); }, Patience);
    return true;
}

bool Demo::TakePictures() {
    narrator::Chapter(QStringLiteral("What the operator's windows show"));
    narrator::Act(QStringLiteral("operator"), QStringLiteral("mcconsole --screenshot ") + m_pictures);
    const QDir folder(m_pictures);
    const DemoPictures taken = DemoPictures::Take(
        PathOf("mcconsole"), ConsoleArguments({QStringLiteral("--screenshot"), m_pictures}), folder);
    for (const QString& picture : taken.names)
        narrator::Hear(QStringLiteral("console"), folder.filePath(picture));
    return taken.problem.isEmpty() || Fail(taken.problem);
}

bool Demo::End() {
    if (m_console.IsRunning()) m_console.Terminate(StopTime);
    bool isGood = m_alpha.EndInput(StopTime) == 0 || Fail(QStringLiteral("alpha does not end well"));
    isGood = (m_bravo.EndInput(StopTime) == 0 || Fail(QStringLiteral("bravo does not end well"))) && isGood;
    m_server.Terminate(StopTime);
    m_module.Terminate(StopTime);
    m_cluster.Stop();
    return isGood;
}
