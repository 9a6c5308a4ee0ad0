// SPDX-License-Identifier: Apache-2.0
#include <platform/widgets/standardnotification.h>

namespace {

constexpr int MaxLength = 4000;  // characters: more would not fit any screen

}  // namespace

StandardNotification::StandardNotification(Icon icon, const QString& title, const QString& text,
                                           StandardButtons buttons)
    : QMessageBox(icon, title, QString(), buttons) {
    setTextFormat(Qt::PlainText);  // the text may quote what a device or a peer said
    setText(text.size() > MaxLength ? text.left(MaxLength) + QChar(0x2026) : text);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    setModal(false);
    setWindowModality(Qt::NonModal);
    setAttribute(Qt::WA_DeleteOnClose);
    setAttribute(Qt::WA_QuitOnClose, false);     // the application ends with its last window of its own
    setAttribute(Qt::WA_ShowWithoutActivating);  // whoever is typing elsewhere goes on
}

StandardNotification::~StandardNotification() = default;
