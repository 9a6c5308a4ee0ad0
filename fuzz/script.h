// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <cstddef>
#include <cstdint>

/// The input of a fuzzer as a script of what is to happen. Each byte decides one thing, so that a changed
/// byte changes that thing and leaves the rest a valid script. At the end everything is 0.
class Script {
  public:
    Script(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}

    bool IsEnd() const { return m_read >= m_size; }
    unsigned Byte() { return IsEnd() ? 0U : m_data[m_read++]; }
    unsigned Below(unsigned limit) { return Byte() % limit; }
    bool Flag() { return (Byte() & 1U) != 0; }
    /// One time in 16, for what is mostly not to happen: a byte of 240 or more.
    bool Rarely() { return Byte() >= 240; }

    /// Mostly small, sometimes near a limit, sometimes anything.
    quint64 Number();
    qint64 SignedNumber();
    double Real();
    /// At most 255 of the bytes that follow.
    QByteArray Bytes();
    /// Anything: also empty, not ASCII, not well-formed, with slashes, or very long.
    QString Text();
    /// Mostly one of a few, so that names meet.
    QString Name();
    /// Of such names, absolute; rarely anything.
    QString Path();

  private:
    QString LongText();

    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_read = 0;
    int m_longTexts = 0;
};
