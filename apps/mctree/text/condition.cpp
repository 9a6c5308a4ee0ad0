// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/text/condition.h>

#include <apps/mctree/text/contentinput.h>
#include <apps/mctree/text/contenttext.h>
#include <apps/mctree/text/glob.h>

#include <platform/values/treeitem.h>
#include <platform/values/valueselection.h>

#include <array>

namespace mctree {

struct Condition::Operator {
    const char* sign;
    EKind kind;

    /// Longer ones before those that they begin with.
    static const std::array<Operator, 8> All;
};

// clang-format off
constexpr std::array<Condition::Operator, 8> Condition::Operator::All = {{
    {"==", EKind::Equal},
    {"!=", EKind::Unequal},
    {"<=", EKind::LessOrEqual},
    {">=", EKind::GreaterOrEqual},
    {"=",  EKind::Equal},
    {"<",  EKind::Less},
    {">",  EKind::Greater},
    {"~",  EKind::Like},
}};
// clang-format on

QString Condition::Parse(const QString& text) {
    *this = Condition();
    if (text == QLatin1String("exists")) return QString();
    for (const Operator& candidate : Operator::All) {
        const QLatin1String sign(candidate.sign);
        if (!text.startsWith(sign)) continue;
        m_kind = candidate.kind;
        m_content = text.mid(sign.size());
        return QString();
    }
    return QStringLiteral(
               R"("%1" is no condition: "exists", or = != < <= > >= ~ with a content, as "=Ready")")
        .arg(text);
}

bool Condition::Holds(const values::TreeItem& item, QString* error) const {
    if (m_kind == EKind::Exists) return true;
    if (item.IsNode()) {
        *error = QStringLiteral("is a node, which has no content to wait for");
        return false;
    }
    if (IsStale(item)) return false;
    return m_kind == EKind::Like ? glob::Matches(m_content, PlainContent(item)) : Compares(item, error);
}

bool Condition::Compares(const values::TreeItem& item, QString* error) const {
    // A selection whose owner has not filled it yet knows none of its items.
    const auto* const selection = dynamic_cast<const values::ValueSelection*>(&item);
    if (selection != nullptr && selection->Count() == 0) return false;
    const Comparison comparison = CompareWithText(item, m_content);
    *error = comparison.error;
    if (!error->isEmpty()) return false;
    if (m_kind == EKind::Equal) return comparison.isEqual;
    if (m_kind == EKind::Unequal) return !comparison.isEqual;
    if (!comparison.isLess) {
        *error = QStringLiteral("is a %1, which is neither less nor greater than another").arg(KindOf(item));
        return false;
    }
    const bool isLess = *comparison.isLess;
    switch (m_kind) {
        case EKind::Less:
            return isLess;
        case EKind::LessOrEqual:
            return isLess || comparison.isEqual;
        case EKind::Greater:
            return !isLess && !comparison.isEqual;
        default:
            return !isLess;
    }
}

}  // namespace mctree
