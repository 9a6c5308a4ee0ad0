// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/widgets/vccheckbox.h>

#include <QtCore/QString>

#include <functional>

/// A switch that asks before it disturbs others. GUI thread.
class AskingCheckBox : public VCCheckBox {
    Q_OBJECT

  public:
    struct Question {
        QString title;
        QString text;  ///< who loses what; empty: nobody anything
        QString action;
    };
    /// Asked before it is switched on, or off.
    using Asker = std::function<Question(bool isOn)>;

    AskingCheckBox(QWidget* parent, const char* name) : VCCheckBox(parent, name) {}

    void SetAsker(Asker asker) { m_asker = std::move(asker); }
    /// The server would refuse a change for \a reason: looks locked and says so. Empty: it would not.
    void SetLock(const QString& reason);
    QSize sizeHint() const override;

  protected:
    void nextCheckState() override;

  private:
    Asker m_asker;
    QString m_lock;
};
