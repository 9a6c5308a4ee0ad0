// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// An interface and a port to listen on, as people write them: "ADDRESS", "ADDRESS:PORT", with brackets
/// around an IPv6 address. "localhost" is 127.0.0.1.
struct ListenAddress {
    QString address;
    int port = 0;

    /// Reads \a text; without a port \a port stays as it is. False with the reason, one line, in \a error.
    bool Parse(const QString& text, QString* error);
    /// The same the other way round.
    QString ToText() const;
};
