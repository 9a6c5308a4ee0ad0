// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/severity.h>

#include <QtCore/QString>

/// One thing that an operator looks at first.
struct SituationItem {
    ESeverity severity = ESeverity::Unknown;
    QString word;    ///< as short as it can be told
    QString detail;  ///< all that is known, in lines
    QString age;     ///< of the word, "12 s old"; empty while that is live
    QString page;    ///< the object name of the page with the cause; empty: asking for a server
    QString brief;   ///< what is said of the word where it has no room; empty: no less can be said

    bool operator==(const SituationItem& other) const {
        return severity == other.severity && word == other.word && detail == other.detail &&
               age == other.age && page == other.page && brief == other.brief;
    }
};
