// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

#include <functional>
#include <utility>
#include <vector>

class ICfg;

/// The frequencies that an operator comes back to: those that were granted last, and favourites with a name
/// each. Kept in the user's configuration. Main thread.
class FrequencyBook : public QObject {
    Q_OBJECT

  public:
    struct Favourite {
        QString name;   ///< may be empty
        double hz = 0;  ///< that IsPossible()

        bool operator==(const Favourite& other) const { return name == other.name && hz == other.hz; }
    };

    static constexpr int MostRecent = 20;
    static constexpr int MostFavourites = 50;
    static constexpr int LongestName = 40;  ///< characters

    /// Whether some receiver can be tuned to \a hz; what this one can is the server's to say.
    static bool IsPossible(double hz);

    explicit FrequencyBook(QObject* parent = nullptr);
    ~FrequencyBook() override;

    /// Takes over what \a cfg keeps. What cannot be right there is left out; how many of them. Tells nobody.
    int Read(ICfg& cfg);
    void WriteRecent(ICfg& cfg) const;
    void WriteFavourites(ICfg& cfg) const;

    /// Another console of this user may keep them in the same place: \a read, which reads them anew, is
    /// called before they change, and by Refresh().
    void ReadBy(std::function<void()> read) { m_read = std::move(read); }
    /// Before somebody looks at them.
    void Refresh();

    /// \a hz was granted: it comes first, once.
    void Remember(double hz);
    /// In Hz, the last one first.
    const std::vector<double>& GetRecent() const { return m_recent; }

    /// In this order; beyond MostFavourites, and what is not possible, is left out, names are cut.
    void SetFavourites(const std::vector<Favourite>& favourites);
    const std::vector<Favourite>& GetFavourites() const { return m_favourites; }
    /// Somebody who saw \a before wants \a after: what another console has added or removed meanwhile stays
    /// so.
    void ChangeFavourites(const std::vector<Favourite>& before, const std::vector<Favourite>& after);

  Q_SIGNALS:
    void RecentChanged();
    void FavouritesChanged();

  private:
    std::function<void()> m_read;
    std::vector<double> m_recent;
    std::vector<Favourite> m_favourites;
};
