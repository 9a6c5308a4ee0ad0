// SPDX-License-Identifier: Apache-2.0
#include <apps/common/mpxorvname.h>

#include <algorithm>

bool IsMpxOrvName(const QString& name) {
    constexpr int MaxLength = 128;
    const QString forbidden = QStringLiteral("/<>,");
    if (name == QLatin1String(".") || name == QLatin1String("..")) return false;
    return !name.isEmpty() && name.size() <= MaxLength && name.trimmed() == name &&
           std::all_of(name.begin(), name.end(), [&forbidden](QChar character) {
               return character.isPrint() && !forbidden.contains(character);
           });
}
