// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QObject>
#include <QtCore/QPointer>
#include <QtWidgets/QWidget>

#include <deque>
#include <functional>

/// The user before modal dialogs: acts on one after the other while whoever opened them waits. Closes all and
/// fails the test if a dialog does not come in time, or one is there that nobody expects (any more). Without
/// steps, none is expected.
class ModalDriver {
  public:
    /// Returns whether it has dealt with \a dialog; if not, it is called again. The event loop may run in it.
    using Step = std::function<bool(QWidget& dialog)>;

    explicit ModalDriver(std::deque<Step> steps = {});
    ~ModalDriver();
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

  private:
    void LookSoon();
    void Look();
    void Act(QWidget& dialog);

    QObject m_context;
    QDeadlineTimer m_deadline;
    std::deque<Step> m_steps;
    QPointer<QWidget> m_actedOn;  ///< by the step that runs now
    QPointer<QWidget> m_dealtWith;
};

/// Does \a open, which opens a modal dialog of the type \a Dialog and waits for its end, and \a act once that
/// is there. Fails if none comes, or if it is still open afterwards.
template <class Dialog>
void WithModalDialog(const std::function<void()>& open, const std::function<void(Dialog&)>& act) {
    const ModalDriver user({[&act](QWidget& widget) {
        auto* const dialog = qobject_cast<Dialog*>(&widget);
        EXPECT_NE(dialog, nullptr) << "it is a " << widget.metaObject()->className();
        if (dialog != nullptr)
            act(*dialog);
        else
            widget.close();
        return true;
    }});
    open();
}
