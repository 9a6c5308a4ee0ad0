// SPDX-License-Identifier: Apache-2.0
#include <platform/nats/bus/cnats.h>

#include <QtCore/QRegularExpression>

namespace nats {

QString CnatsText(natsStatus status, const char* text) {
    static const QRegularExpression place(QStringLiteral("^\\([a-z_]+\\.c:[0-9]+\\): "));
    const bool isSaid = text != nullptr && *text != '\0';
    return QString::fromUtf8(isSaid ? text : natsStatus_GetText(status)).remove(place).simplified();
}

QString CnatsText(natsStatus status) {
    natsStatus last = NATS_OK;
    const char* const text = nats_GetLastError(&last);
    return CnatsText(status, last == status ? text : nullptr);
}

}  // namespace nats
