// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>

#include <vector>

class QObject;
class QWidget;

/// A widget or display of the library, as a tool in which forms are laid out has to know it.
struct BoundWidget {
    /// Where it is made: in the tool it must not do more than look like it will.
    enum class EPlace { Program, Tool };

    const char* className;
    const char* header;       ///< as programs include it
    const char* sign;         ///< two letters at most, which its icon shows
    bool isDisplay;           ///< made of several values
    const char* property;     ///< of its path, or paths; null: it has none
    unsigned contents;        ///< that it shows at that path: a set of content::EContent
    QSize size;               ///< of one that is dropped on a form
    const char* toolTip;      ///< one line
    const char* explanation;  ///< some sentences
    QWidget* (*make)(QWidget* parent, EPlace place);

    /// Whether it has several paths.
    bool HasList() const;
    /// What a form begins with that holds one, and what its properties are.
    QString ToXml() const;

    static const std::vector<BoundWidget>& All();
    /// Null if \a object is none of them.
    static const BoundWidget* Of(const QObject* object);
};
