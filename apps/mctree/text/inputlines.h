// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <istream>
#include <memory>
#include <optional>

namespace mctree {

/// Reads the lines of a stream on a thread of its own, so that the event loop goes on while nothing comes,
/// and holds few of them: whoever writes them faster than they are taken has to wait. The thread cannot be
/// ended while it reads, so it outlives this object. Needs the application object; main thread.
class InputLines final : public QObject {
  public:
    /// The standard input, or a file, all of which is in \a bytes.
    static std::shared_ptr<std::istream> StandardInput();
    static std::shared_ptr<std::istream> Of(const QByteArray& bytes);

    /// \a onMore is called by the event loop when there is more to take, or nothing more will come.
    InputLines(std::shared_ptr<std::istream> stream, std::function<void()> onMore);
    ~InputLines() override;

    /// The next line, if it is there. One that is too long, 1 MiB, comes cut and is told as such.
    std::optional<QString> Take(bool* isTooLong);
    /// Nothing is there and nothing will come.
    bool IsAtEnd() const;

  private:
    struct Line;
    struct Shared;
    static bool ReadLine(std::istream& stream, Line* line);
    static void Read(const std::shared_ptr<Shared>& shared);

    const std::function<void()> m_onMore;
    const std::shared_ptr<Shared> m_shared;
};

}  // namespace mctree
