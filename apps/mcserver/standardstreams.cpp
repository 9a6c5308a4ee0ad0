// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/standardstreams.h>

#include <cstdio>

namespace {

void Write(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

}  // namespace

void standardstreams::Print(const QString& text) {
    Write(stdout, text);
}

void standardstreams::PrintLine(const QString& line) {
    Write(stdout, line + QLatin1Char('\n'));
}

void standardstreams::Complain(const QString& line) {
    Write(stderr, QStringLiteral("mcserver: %1\n").arg(line));
}
