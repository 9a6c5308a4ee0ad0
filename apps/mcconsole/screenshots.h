// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTimer>

class ConsoleWindow;

/// Saves a picture of every page of a window, and of the dialog that asks for the server, once everything is
/// there to be shown. Main thread.
class Screenshots : public QObject {
    Q_OBJECT

  public:
    Screenshots(ConsoleWindow& window, const QString& directory);
    ~Screenshots() override;

  Q_SIGNALS:
    /// All are saved, or it was in vain: then \a error says why, in one line.
    void Finished(const QString& error);

  private:
    void Look();
    void SaveAll();
    void Fail(const QString& error);

    ConsoleWindow& m_window;
    QString m_directory;
    QTimer m_settle;   ///< until everything is drawn
    QTimer m_timeout;  ///< until it is given up
};
