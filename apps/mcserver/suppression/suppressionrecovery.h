// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <QtCore/QByteArray>
#include <QtCore/QDateTime>
#include <QtCore/QString>

#include <vector>

struct ModuleSettings;
struct RecoveryContent;

/// What people entered for the suppression reaches the configuration when the server ends. In case it does
/// not end in an orderly way, there is a file beside the configuration with what is entered meanwhile: taken
/// over at the start, removed at the end. Main thread, but for Write.
class SuppressionRecovery {
  public:
    /// What became of the file that the last server left.
    enum class EOutcome {
        Nothing,    ///< there was none, or nothing in it that the configuration does not have
        TakenOver,  ///< the next plant makes the modules that it names
        PutAside,   ///< it is not used, and kept under another name
        InTheWay    ///< it is not used, and cannot be put aside: nothing is written until the next start
    };
    enum class EReason { None, Damaged, OtherConfiguration, OlderThanConfiguration, Unreadable };
    struct Report {
        EOutcome outcome = EOutcome::Nothing;
        EReason reason = EReason::None;  ///< why it is not used
        QString file;                    ///< where it is now
        QString detail;                  ///< of the reason or the obstacle, one line of English; may be empty
        QDateTime time;                  ///< UTC, of the last change that is in it
        int modules = 0;

        /// Says nothing if there is nothing to be told.
        CodedText ToText() const;
    };

    /// Looks for the file, once the configuration is held, and before the plant is made.
    const Report& Begin();
    const Report& GetReport() const { return m_report; }
    /// Once all is saved: nothing is left to be recovered. Empty, or why the file cannot be removed, one
    /// line.
    QString End();

    /// As a file: the settings of now.
    QByteArray ToBytes(std::vector<ModuleSettings> modules) const;
    /// Makes the file hold \a bytes. Empty, or why it cannot, one line. Any thread.
    QString Write(const QByteArray& bytes) const;

  private:
    void Judge(const QByteArray& bytes);
    void PutAside(EReason reason, const QString& detail);

    bool m_isBegun = false;
    QString m_file;
    QString m_configuration;
    QByteArray m_mark;
    Report m_report;
};
