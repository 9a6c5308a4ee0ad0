// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/pathpattern.h>

#include <apps/mctree/text/glob.h>

#include <algorithm>

namespace mctree {

namespace {

constexpr int LongestPath = 4096;
constexpr int LongestName = 1024;

QStringList NamesOf(const QString& path) {
    return path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
}

bool HasAny(const std::vector<bool>& flags) {
    return std::find(flags.begin(), flags.end(), true) != flags.end();
}

}  // namespace

QString PathPattern::Parse(const QString& text, EReading reading) {
    *this = PathPattern();
    const QStringList names = NamesOf(text);
    m_text = QLatin1Char('/') + names.join(QLatin1Char('/'));
    const bool isLong = m_text.size() > LongestPath ||
                        std::any_of(names.begin(), names.end(),
                                    [](const QString& name) { return name.size() > LongestName; });
    if (isLong) return QStringLiteral("a path is too long");
    QStringList fixed;
    for (const QString& name : names) {
        const bool isGlob = reading == EReading::Globs && glob::IsGlob(name);
        const bool isAnyDepth = isGlob && name == QLatin1String("**");
        m_isGlob = m_isGlob || isGlob;
        const QString plain = isGlob || reading == EReading::AsItStands ? name : glob::Unescaped(name);
        if (!m_isGlob) fixed += plain;
        m_parts.push_back({plain, isGlob, isAnyDepth});
    }
    // What is below, and not the item itself.
    if (!m_parts.empty() && m_parts.back().isAnyDepth) m_parts.push_back({QStringLiteral("*"), true, false});
    m_fixedPath = QLatin1Char('/') + fixed.join(QLatin1Char('/'));
    return QString();
}

bool PathPattern::Matches(const QString& path) const {
    Places places = Start();
    for (const QString& name : NamesOf(path))
        places = After(places, name);
    return places.back();
}

bool PathPattern::MatchesAtOrAbove(const QString& path) const {
    Places places = Start();
    for (const QString& name : NamesOf(path)) {
        if (places.back()) return true;
        places = After(places, name);
    }
    return places.back();
}

bool PathPattern::MayMatchBelow(const QString& path) const {
    Places places = Start();
    for (const QString& name : NamesOf(path))
        places = After(places, name);
    return HasAny(places);
}

/// "**" may stand for no name at all, so what follows it is entered as well.
void PathPattern::Enter(Places& places, const std::vector<Part>& parts, std::size_t place) {
    places[place] = true;
    while (place < parts.size() && parts[place].isAnyDepth)
        places[++place] = true;
}

PathPattern::Places PathPattern::Start() const {
    Places places(m_parts.size() + 1);
    Enter(places, m_parts, 0);
    return places;
}

PathPattern::Places PathPattern::After(const Places& places, const QString& name) const {
    Places next(places.size());
    for (std::size_t i = 0; i < m_parts.size(); ++i) {
        if (!places[i]) continue;
        const Part& part = m_parts[i];
        if (part.isAnyDepth) Enter(next, m_parts, i);
        const bool isMatch = part.isGlob ? glob::Matches(part.text, name) : part.text == name;
        if (!part.isAnyDepth && isMatch) Enter(next, m_parts, i + 1);
    }
    return next;
}

}  // namespace mctree
