// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/screenshots.h>

#include <apps/mcconsole/connectdialog.h>
#include <apps/mcconsole/consolewindow.h>
#include <apps/pages/pictures.h>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds SettleTime(1500);  // values arrive, the simulated device goes on
constexpr std::chrono::milliseconds Timeout(15'000);

}  // namespace

Screenshots::Screenshots(ConsoleWindow& window, const QString& directory)
    : m_window(window), m_directory(directory) {
    m_settle.setSingleShot(true);
    m_timeout.setSingleShot(true);
    connect(&m_settle, &QTimer::timeout, this, &Screenshots::SaveAll);
    connect(&m_timeout, &QTimer::timeout, this, [this] {
        const QString problem = m_window.GetSession().GetProblem();
        Fail(QStringLiteral("no connection in time%1")
                 .arg(problem.isEmpty() ? QString() : QStringLiteral(": ") + problem));
    });
    connect(&m_window.GetSession(), &ConsoleSession::Changed, this, &Screenshots::Look);
    m_timeout.start(Timeout + SettleTime);
    Look();
}

Screenshots::~Screenshots() = default;

void Screenshots::Look() {
    const ConsoleSession& session = m_window.GetSession();
    // A user whose role may not create one has no MpxORV: then there is nothing to wait for.
    const bool isComplete = !session.GetMpxOrvPath().isEmpty() || session.IsMpxOrvMissing();
    if (!isComplete) return m_settle.stop();
    if (!m_settle.isActive() && m_timeout.isActive()) m_settle.start(SettleTime);
}

void Screenshots::SaveAll() {
    m_timeout.stop();
    const QString prefix = QStringLiteral("console-");
    QString error = pictures::SavePages(m_window, *m_window.GetTabs(), m_directory, prefix);
    if (error.isEmpty()) {
        ConnectDialog dialog(RecentServers(), VtClientOptions(), nullptr);
        dialog.show();
        error = pictures::Save(dialog, m_directory, prefix + QStringLiteral("Connect"));
    }
    Q_EMIT Finished(error);
}

void Screenshots::Fail(const QString& error) {
    m_timeout.stop();
    m_settle.stop();
    Q_EMIT Finished(error);
}
