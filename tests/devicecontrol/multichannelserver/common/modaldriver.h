// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <gtest/gtest.h>

#include <QtCore/QDeadlineTimer>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>
#include <QtWidgets/QWidget>

#include <deque>
#include <functional>
#include <utility>

/// The user before modal dialogs: acts on one after the other while whoever opened them waits. Closes all and
/// fails the test if a dialog does not come in time, or one comes that nobody expects.
class ModalDriver {
  public:
    /// Returns whether it has dealt with \a dialog; if not, it is called again.
    using Step = std::function<bool(QWidget& dialog)>;

    explicit ModalDriver(std::deque<Step> steps) : m_steps(std::move(steps)) { LookSoon(); }
    ~ModalDriver() { EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " dialogs did not come"; }
    ModalDriver(const ModalDriver&) = delete;
    ModalDriver& operator=(const ModalDriver&) = delete;

  private:
    // Each look has a timer of its own: a step may open the next dialog, and return after it was closed.
    void LookSoon() {
        QTimer::singleShot(0, &m_context, [this] { Look(); });
    }
    void Look() {
        LookSoon();
        QWidget* const dialog = QApplication::activeModalWidget();
        if (dialog == nullptr) return;
        if (m_steps.empty() || m_deadline.hasExpired()) {
            ADD_FAILURE() << "unexpected: " << qPrintable(dialog->windowTitle());
            dialog->close();
        } else {
            const Step step = m_steps.front();
            m_steps.pop_front();
            if (!step(*dialog)) m_steps.push_front(step);
        }
    }

    QObject m_context;
    QDeadlineTimer m_deadline{20000};
    std::deque<Step> m_steps;
};
