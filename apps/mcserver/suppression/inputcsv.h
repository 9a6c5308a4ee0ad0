// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <vector>

/// The inputs of data modules as a text with commas: module, input, name, frequency in MHz. Says what is
/// wrong with the form of such a text; whether there are such inputs is for others to know.
namespace inputcsv {

struct Line {
    int number = 0;  ///< in the text, as people count
    QString module;
    QString input;
    QString name;
    QString frequency;
};

struct Content {
    std::vector<Line> lines;  ///< as far as nothing is wrong
    QString problem;          ///< empty: it was read to its end
};

/// Whether \a line is the first one of such a text.
bool IsHeader(const QString& line);
QString Write(const std::vector<Line>& lines);
/// Separators are commas, semicolons or tabs.
Content Read(const QStringList& lines);
/// A frequency as it is written, with all its digits; empty for none.
QString FrequencyOf(double hz);
/// Why a line does not have \a cells cells but \a expected.
QString WrongCount(int cells, int expected);
/// \a reason, with the line that it is about.
QString InLine(int number, const QString& reason);

}  // namespace inputcsv
