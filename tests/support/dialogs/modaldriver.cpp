// SPDX-License-Identifier: Apache-2.0
#include <tests/support/dialogs/modaldriver.h>

#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <chrono>
#include <utility>

namespace {

constexpr std::chrono::seconds Patience(20);

}  // namespace

ModalDriver::ModalDriver(std::deque<Step> steps) : m_deadline(Patience), m_steps(std::move(steps)) {
    LookSoon();
}

// What was to come may be there, and nobody has looked yet.
ModalDriver::~ModalDriver() {
    if (QApplication::activeModalWidget() != nullptr) Look();
    EXPECT_TRUE(m_steps.empty()) << m_steps.size() << " dialogs did not come";
}

// Each look has a timer of its own: a step may open the next dialog, and return after it was closed.
void ModalDriver::LookSoon() {
    QTimer::singleShot(0, &m_context, [this] { Look(); });
}

void ModalDriver::Look() {
    LookSoon();
    QWidget* const dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || dialog == m_actedOn) return;
    // One that was dealt with may take some turns to go.
    if (dialog == m_dealtWith && !m_deadline.hasExpired()) return;
    if (m_steps.empty() || m_deadline.hasExpired()) {
        ADD_FAILURE() << "unexpected: " << qPrintable(dialog->windowTitle());
        dialog->close();
    } else {
        Act(*dialog);
    }
}

void ModalDriver::Act(QWidget& dialog) {
    const Step step = m_steps.front();
    m_steps.pop_front();
    const QPointer<QWidget> before = std::exchange(m_actedOn, &dialog);
    const QPointer<QWidget> actedOn(&dialog);  // which may be gone afterwards
    if (step(dialog))
        m_dealtWith = actedOn;
    else
        m_steps.push_front(step);
    m_actedOn = before;
}
