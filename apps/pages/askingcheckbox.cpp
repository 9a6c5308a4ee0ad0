// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/askingcheckbox.h>

#include <apps/pages/question.h>

#include <QtCore/QPointer>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>
#include <QtWidgets/QToolTip>

namespace {

constexpr int LockSize = 14;

/// The styles have none.
QIcon LockIcon(const QColor& ink) {
    QPixmap pixmap(LockSize, LockSize);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(ink, 1.6));
    painter.drawArc(QRectF(4, 1.5, 6, 8), 0, 180 * 16);
    painter.setPen(Qt::NoPen);
    painter.setBrush(ink);
    painter.drawRoundedRect(QRectF(2.5, 6, 9, 6.5), 1, 1);
    return QIcon(pixmap);
}

}  // namespace

void AskingCheckBox::SetLock(const QString& reason) {
    if (reason == m_lock) return;
    m_lock = reason;
    setIconSize(QSize(LockSize, LockSize));
    setIcon(reason.isEmpty() ? QIcon() : LockIcon(palette().color(QPalette::WindowText)));
    setToolTip(reason.toHtmlEscaped());
    setAccessibleName(reason.isEmpty() ? text() : tr("%1 (locked)").arg(text()));
}

/// Its own lock takes the room that every box keeps for the one of a value that cannot be written.
QSize AskingCheckBox::sizeHint() const {
    return m_lock.isEmpty() ? VCCheckBox::sizeHint() : QCheckBox::sizeHint();
}

void AskingCheckBox::nextCheckState() {
    if (!m_lock.isEmpty()) return QToolTip::showText(mapToGlobal(rect().bottomLeft()), toolTip(), this);
    const bool isOn = !isChecked();
    const bool mayAsk = m_asker && GetBinding().MayEdit();
    const Question asked = mayAsk ? m_asker(isOn) : Question();
    if (!asked.text.isEmpty()) {
        const QPointer<AskingCheckBox> self(this);
        const QString path = GetBinding().GetPath();
        // Meanwhile somebody may switch it, or it may come to show another one's.
        const auto loss = [this, isOn, path]() -> std::optional<QString> {
            if (isChecked() == isOn || GetBinding().GetPath() != path) return std::nullopt;
            return m_asker(isOn).text;
        };
        const bool isConfirmed = question::IsConfirmed(this, asked.title, asked.action, loss);
        if (self == nullptr || !isConfirmed || !loss()) return;
    }
    VCCheckBox::nextCheckState();
}
