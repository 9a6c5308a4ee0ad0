// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <map>
#include <optional>
#include <string_view>

namespace vt {

/// What the server has said on a shared road and cannot be applied yet, by its numbers: within bounds, what
/// is furthest ahead is dropped, since it is fetched when its turn comes.
class RoadPile {
  public:
    struct Content {
        QByteArray bytes;
        bool isContinued = false;  ///< the next one goes on with it
    };

    bool IsEmpty() const { return m_contents.empty(); }
    bool Has(quint64 number) const { return m_contents.count(number) != 0; }
    /// The lowest number; only if there is any.
    quint64 First() const { return m_contents.begin()->first; }
    /// Keeps \a content, unless it is there already. As long as it is not known from where on the road
    /// counts, what is dropped are the lowest numbers.
    void Add(quint64 number, std::string_view content, bool isContinued, bool isStartKnown);
    /// Takes out what has this number, if it is there.
    std::optional<Content> Take(quint64 number);
    /// Without all up to \a number.
    void DropUpTo(quint64 number);
    void Clear();

  private:
    bool IsOver() const;
    void Erase(std::map<quint64, Content>::iterator content);

    std::map<quint64, Content> m_contents;
    std::size_t m_bytes = 0;
};

}  // namespace vt
