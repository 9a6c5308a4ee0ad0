// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/printer.h>

#include <utility>

namespace mctree {

namespace {

constexpr int BlockSize = 65536;

const char* Code(EColour colour) {
    switch (colour) {
        case EColour::Node:
            return "\033[1;34m";
        case EColour::Faint:
            return "\033[2m";
        case EColour::Warning:
            return "\033[33m";
        case EColour::Plain:
            break;
    }
    return "";
}

}  // namespace

Printer::Printer(Sink sink, const OutputStyle& style) : m_sink(std::move(sink)), m_style(style) {}

Printer::~Printer() {
    Flush();
}

void Printer::WriteLine(const QString& line) {
    if (!m_isOpen) return;
    m_pending += line.toUtf8();
    m_pending += '\n';
    if (m_pending.size() >= BlockSize) Flush();
}

void Printer::Flush() {
    if (m_isOpen && !m_pending.isEmpty()) m_isOpen = m_sink(m_pending);
    m_pending.resize(0);
}

QString Printer::Painted(const QString& text, EColour colour) const {
    if (!m_style.hasColour || colour == EColour::Plain || text.isEmpty()) return text;
    return QLatin1String(Code(colour)) + text + QLatin1String("\033[0m");
}

}  // namespace mctree
