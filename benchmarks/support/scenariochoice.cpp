// SPDX-License-Identifier: Apache-2.0
#include "scenariochoice.h"

#include <QtCore/QCommandLineParser>
#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstdio>

namespace bench {

ScenarioChoice::ScenarioChoice(const QString& description) {
    QCommandLineParser parser;
    parser.setApplicationDescription(description + QStringLiteral(" Fails if a limit is missed."));
    parser.addHelpOption();
    const QCommandLineOption filter(QStringLiteral("filter"),
                                    QStringLiteral("Only scenarios with this in their name or table."),
                                    QStringLiteral("text"));
    const QCommandLineOption quick(QStringLiteral("quick"), QStringLiteral("One short round of each."));
    parser.addOptions({filter, quick});
    parser.process(*QCoreApplication::instance());
    m_filter = parser.value(filter);
    m_isQuick = parser.isSet(quick);
}

bool ScenarioChoice::Has(const QString& name, const std::vector<Row>& rows) const {
    const auto isMeant = [this](const QString& text) { return text.contains(m_filter, Qt::CaseInsensitive); };
    return isMeant(name) ||
           std::any_of(rows.begin(), rows.end(), [&](const Row& row) { return isMeant(row.title); });
}

void ScenarioChoice::PlayRounds(const QString& name, int rounds, const std::function<void(int)>& play) const {
    std::fprintf(stderr, "%s", qPrintable(name));
    for (int round = 0; round < (m_isQuick ? 1 : rounds); ++round) {
        play(round);
        std::fputc('.', stderr);
    }
    std::fputc('\n', stderr);
}

}  // namespace bench
