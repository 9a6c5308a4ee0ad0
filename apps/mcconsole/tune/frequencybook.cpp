// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/frequencybook.h>

#include <apps/common/frequencytext.h>

#include <platform/config/icfg.h>

#include <algorithm>
#include <memory>

namespace {

constexpr char RecentSection[] = "RecentFrequencies";  // apart: another console of this user writes them too
constexpr char FavouritesSection[] = "FavouriteFrequencies";
constexpr char HertzKey[] = "Hertz";
constexpr char FavouriteNameKey[] = "Name";
constexpr int FrequencyDigits = 15;

QString NumberedKey(const char* name, std::size_t number) {
    return QString::fromLatin1(name) + QString::number(number);
}

/// Of one line, without what would be taken for the mark of a key, or for the end of a name.
QString NameFrom(const QString& text) {
    return text.simplified().left(FrequencyBook::LongestName);
}

struct KeptFrequencies {
    std::vector<FrequencyBook::Favourite> entries;
    int leftOut = 0;
};

/// Entries that were kept before the last ones are numbered without a gap; whoever edits the file may leave
/// one.
KeptFrequencies ReadAll(ICfg& cfg, const char* sectionName, int most) {
    KeptFrequencies kept;
    const std::unique_ptr<ICfg> section(cfg.OpenSection(QLatin1String(sectionName)));
    if (!section) return kept;
    for (int i = 0; i < most; ++i) {
        const auto number = static_cast<std::size_t>(i);
        const QString name = section->ReadString(NumberedKey(FavouriteNameKey, number), QString());
        const QString text = section->ReadString(NumberedKey(HertzKey, number), QString());
        if (text.isEmpty() && name.isEmpty()) continue;
        bool isNumber = false;
        const double hz = text.toDouble(&isNumber);
        if (isNumber && FrequencyBook::IsPossible(hz))
            kept.entries.push_back({NameFrom(name), hz});
        else
            ++kept.leftOut;
    }
    return kept;
}

void WriteAll(ICfg& cfg, const char* sectionName, const std::vector<FrequencyBook::Favourite>& entries) {
    cfg.RemoveSection(QLatin1String(sectionName));
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(QLatin1String(sectionName)));
    for (std::size_t i = 0; i < entries.size(); ++i) {
        if (!entries[i].name.isEmpty())
            section->WriteString(NumberedKey(FavouriteNameKey, i), entries[i].name);
        section->WriteString(NumberedKey(HertzKey, i), QString::number(entries[i].hz, 'g', FrequencyDigits));
    }
    section->CommitKey(NumberedKey(HertzKey, 0));
}

}  // namespace

FrequencyBook::FrequencyBook(QObject* parent) : QObject(parent) {}

FrequencyBook::~FrequencyBook() = default;

bool FrequencyBook::IsPossible(double hz) {
    constexpr double LeastHertz = FrequencyText::MostPlainMegahertz;  // less would be taken for MHz
    constexpr double HzPerMegahertz = 1e6;
    return hz > LeastHertz && hz <= FrequencyText::MostPlainMegahertz * HzPerMegahertz;
}

int FrequencyBook::Read(ICfg& cfg) {
    const KeptFrequencies recent = ReadAll(cfg, RecentSection, MostRecent);
    m_recent.clear();
    for (const Favourite& entry : recent.entries)
        if (std::find(m_recent.begin(), m_recent.end(), entry.hz) == m_recent.end())
            m_recent.push_back(entry.hz);
    const KeptFrequencies favourites = ReadAll(cfg, FavouritesSection, MostFavourites);
    m_favourites = favourites.entries;
    return recent.leftOut + favourites.leftOut;
}

void FrequencyBook::WriteRecent(ICfg& cfg) const {
    std::vector<Favourite> entries;
    for (const double hz : m_recent)
        entries.push_back({QString(), hz});
    WriteAll(cfg, RecentSection, entries);
}

void FrequencyBook::WriteFavourites(ICfg& cfg) const {
    WriteAll(cfg, FavouritesSection, m_favourites);
}

void FrequencyBook::Refresh() {
    if (m_read) m_read();
}

void FrequencyBook::Remember(double hz) {
    Refresh();
    if (!IsPossible(hz) || (!m_recent.empty() && m_recent.front() == hz)) return;
    m_recent.erase(std::remove(m_recent.begin(), m_recent.end(), hz), m_recent.end());
    m_recent.insert(m_recent.begin(), hz);
    if (m_recent.size() > MostRecent) m_recent.resize(MostRecent);
    Q_EMIT RecentChanged();
}

void FrequencyBook::SetFavourites(const std::vector<Favourite>& favourites) {
    std::vector<Favourite> taken;
    for (const Favourite& favourite : favourites)
        if (taken.size() < MostFavourites && IsPossible(favourite.hz))
            taken.push_back({NameFrom(favourite.name), favourite.hz});
    if (taken == m_favourites) return;
    m_favourites = std::move(taken);
    Q_EMIT FavouritesChanged();
}

void FrequencyBook::ChangeFavourites(const std::vector<Favourite>& before,
                                     const std::vector<Favourite>& after) {
    Refresh();
    const auto isIn = [](const std::vector<Favourite>& list, const Favourite& wanted) {
        return std::find(list.begin(), list.end(), wanted) != list.end();
    };
    std::vector<Favourite> merged;
    for (const Favourite& favourite : after) {
        const bool isGone = isIn(before, favourite) && !isIn(m_favourites, favourite);
        if (!isGone) merged.push_back(favourite);
    }
    for (const Favourite& favourite : m_favourites)
        if (!isIn(before, favourite) && !isIn(after, favourite)) merged.push_back(favourite);
    SetFavourites(merged);
}
