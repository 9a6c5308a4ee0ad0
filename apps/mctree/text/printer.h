// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <functional>

namespace mctree {

enum class EColour { Plain, Node, Faint, Warning };

/// What the output can show.
struct OutputStyle {
    bool isTerminal = false;
    bool hasColour = false;
    int width = 0;  ///< columns; 0: as many as it takes
};

/// Writes lines to the output. Keeps at most a block of them back until Flush().
class Printer {
  public:
    /// Takes all bytes, or returns false: then there is no more output.
    using Sink = std::function<bool(const QByteArray&)>;

    Printer(Sink sink, const OutputStyle& style);
    ~Printer();
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    /// \a line goes out as it is: what came from a server has been made safe before.
    void WriteLine(const QString& line);
    void Flush();
    bool IsOpen() const { return m_isOpen; }  ///< false once the sink took no more

    const OutputStyle& Style() const { return m_style; }
    /// \a text in \a colour, where there are colours.
    QString Painted(const QString& text, EColour colour) const;

  private:
    Sink m_sink;
    OutputStyle m_style;
    QByteArray m_pending;
    bool m_isOpen = true;
};

}  // namespace mctree
