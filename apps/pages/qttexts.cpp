// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/qttexts.h>

#include <QtCore/QCoreApplication>

#include <algorithm>
#include <cstring>

namespace {

constexpr char QtTextsContext[] = "QtTexts";

// clang-format off
constexpr const char* TextsOfQt[] = {
    // Buttons.
    QT_TRANSLATE_NOOP("QtTexts", "OK"),
    QT_TRANSLATE_NOOP("QtTexts", "&OK"),
    QT_TRANSLATE_NOOP("QtTexts", "Cancel"),
    QT_TRANSLATE_NOOP("QtTexts", "&Cancel"),
    QT_TRANSLATE_NOOP("QtTexts", "Close"),
    QT_TRANSLATE_NOOP("QtTexts", "&Close"),
    QT_TRANSLATE_NOOP("QtTexts", "&Yes"),
    QT_TRANSLATE_NOOP("QtTexts", "&No"),
    QT_TRANSLATE_NOOP("QtTexts", "Save"),
    QT_TRANSLATE_NOOP("QtTexts", "&Save"),
    QT_TRANSLATE_NOOP("QtTexts", "Open"),
    QT_TRANSLATE_NOOP("QtTexts", "&Open"),
    QT_TRANSLATE_NOOP("QtTexts", "Show Details..."),
    QT_TRANSLATE_NOOP("QtTexts", "Hide Details..."),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll Left"),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll Right"),
    // The menu of a field.
    QT_TRANSLATE_NOOP("QtTexts", "&Undo"),
    QT_TRANSLATE_NOOP("QtTexts", "&Redo"),
    QT_TRANSLATE_NOOP("QtTexts", "Cu&t"),
    QT_TRANSLATE_NOOP("QtTexts", "&Copy"),
    QT_TRANSLATE_NOOP("QtTexts", "&Paste"),
    QT_TRANSLATE_NOOP("QtTexts", "Delete"),
    QT_TRANSLATE_NOOP("QtTexts", "&Delete"),
    QT_TRANSLATE_NOOP("QtTexts", "Select All"),
    QT_TRANSLATE_NOOP("QtTexts", "&Select All"),
    QT_TRANSLATE_NOOP("QtTexts", "&Step up"),
    QT_TRANSLATE_NOOP("QtTexts", "Step &down"),
    QT_TRANSLATE_NOOP("QtTexts", "Copy &Link Location"),
    // Keys, as menus and lists of keys tell them.
    QT_TRANSLATE_NOOP("QtTexts", "Ctrl"),
    QT_TRANSLATE_NOOP("QtTexts", "Shift"),
    QT_TRANSLATE_NOOP("QtTexts", "Esc"),
    QT_TRANSLATE_NOOP("QtTexts", "Enter"),
    QT_TRANSLATE_NOOP("QtTexts", "Return"),
    QT_TRANSLATE_NOOP("QtTexts", "Space"),
    QT_TRANSLATE_NOOP("QtTexts", "Backspace"),
    QT_TRANSLATE_NOOP("QtTexts", "Ins"),
    QT_TRANSLATE_NOOP("QtTexts", "Del"),
    QT_TRANSLATE_NOOP("QtTexts", "Home"),
    QT_TRANSLATE_NOOP("QtTexts", "End"),
    QT_TRANSLATE_NOOP("QtTexts", "PgUp"),
    QT_TRANSLATE_NOOP("QtTexts", "PgDown"),
    QT_TRANSLATE_NOOP("QtTexts", "Left"),
    QT_TRANSLATE_NOOP("QtTexts", "Right"),
    QT_TRANSLATE_NOOP("QtTexts", "Up"),
    QT_TRANSLATE_NOOP("QtTexts", "Down"),
    // Choosing a file.
    QT_TRANSLATE_NOOP("QtTexts", "Look in:"),
    QT_TRANSLATE_NOOP("QtTexts", "Save As"),
    QT_TRANSLATE_NOOP("QtTexts", "File &name:"),
    QT_TRANSLATE_NOOP("QtTexts", "File name:"),
    QT_TRANSLATE_NOOP("QtTexts", "Files of type:"),
    QT_TRANSLATE_NOOP("QtTexts", "Directory:"),
    QT_TRANSLATE_NOOP("QtTexts", "&Choose"),
    QT_TRANSLATE_NOOP("QtTexts", "&Rename"),
    QT_TRANSLATE_NOOP("QtTexts", "Show &hidden files"),
    QT_TRANSLATE_NOOP("QtTexts", "&New Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "New Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "Create New Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "Create a New Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "Back"),
    QT_TRANSLATE_NOOP("QtTexts", "Go back"),
    QT_TRANSLATE_NOOP("QtTexts", "Forward"),
    QT_TRANSLATE_NOOP("QtTexts", "Go forward"),
    QT_TRANSLATE_NOOP("QtTexts", "Parent Directory"),
    QT_TRANSLATE_NOOP("QtTexts", "Go to the parent directory"),
    QT_TRANSLATE_NOOP("QtTexts", "List View"),
    QT_TRANSLATE_NOOP("QtTexts", "Change to list view mode"),
    QT_TRANSLATE_NOOP("QtTexts", "Detail View"),
    QT_TRANSLATE_NOOP("QtTexts", "Change to detail view mode"),
    QT_TRANSLATE_NOOP("QtTexts", "Name"),
    QT_TRANSLATE_NOOP("QtTexts", "Size"),
    QT_TRANSLATE_NOOP("QtTexts", "Type"),
    QT_TRANSLATE_NOOP("QtTexts", "Date Modified"),
    QT_TRANSLATE_NOOP("QtTexts", "All Files (*)"),
    QT_TRANSLATE_NOOP("QtTexts", "Computer"),
    QT_TRANSLATE_NOOP("QtTexts", "%1 already exists.\nDo you want to replace it?"),
    QT_TRANSLATE_NOOP("QtTexts", "%1\nFile not found.\nPlease verify the correct file name was given."),
    QT_TRANSLATE_NOOP("QtTexts", "File"),
    QT_TRANSLATE_NOOP("QtTexts", "%1 File"),
    QT_TRANSLATE_NOOP("QtTexts", "Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "File Folder"),
    QT_TRANSLATE_NOOP("QtTexts", "Drive"),
    QT_TRANSLATE_NOOP("QtTexts", "Shortcut"),
    QT_TRANSLATE_NOOP("QtTexts", "Unknown"),
    QT_TRANSLATE_NOOP("QtTexts", "Files"),
    QT_TRANSLATE_NOOP("QtTexts", "Directories"),
    QT_TRANSLATE_NOOP("QtTexts", "Sidebar"),
    QT_TRANSLATE_NOOP("QtTexts", "List of places and bookmarks"),
    QT_TRANSLATE_NOOP("QtTexts", "Find Directory"),
    QT_TRANSLATE_NOOP("QtTexts", "Recent Places"),
    QT_TRANSLATE_NOOP("QtTexts", "Remove"),
    QT_TRANSLATE_NOOP("QtTexts", "My Computer"),
    QT_TRANSLATE_NOOP("QtTexts", "Invalid filename"),
    QT_TRANSLATE_NOOP("QtTexts", "%1\nDirectory not found.\nPlease verify the correct directory name was given."),
    QT_TRANSLATE_NOOP("QtTexts", "'%1' is write protected.\nDo you want to delete it anyway?"),
    QT_TRANSLATE_NOOP("QtTexts", "Are you sure you want to delete '%1'?"),
    QT_TRANSLATE_NOOP("QtTexts", "Could not delete directory."),
    // The menu of a scroll bar.
    QT_TRANSLATE_NOOP("QtTexts", "Scroll here"),
    QT_TRANSLATE_NOOP("QtTexts", "Left edge"),
    QT_TRANSLATE_NOOP("QtTexts", "Right edge"),
    QT_TRANSLATE_NOOP("QtTexts", "Page left"),
    QT_TRANSLATE_NOOP("QtTexts", "Page right"),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll left"),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll right"),
    QT_TRANSLATE_NOOP("QtTexts", "Top"),
    QT_TRANSLATE_NOOP("QtTexts", "Bottom"),
    QT_TRANSLATE_NOOP("QtTexts", "Page up"),
    QT_TRANSLATE_NOOP("QtTexts", "Page down"),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll up"),
    QT_TRANSLATE_NOOP("QtTexts", "Scroll down"),
};
// clang-format on

/// By the name of a class. Classes of the programs are not called so, and have their texts in the catalogues.
bool IsOfQt(const char* context) {
    return context != nullptr && context[0] == 'Q' && context[1] >= 'A' && context[1] <= 'Z';
}

}  // namespace

QString QtTexts::translate(const char* context, const char* sourceText, const char* /*disambiguation*/,
                           int /*n*/) const {
    if (!IsOfQt(context) || sourceText == nullptr) return QString();
    const auto isSame = [sourceText](const char* text) { return std::strcmp(text, sourceText) == 0; };
    const bool isKnown = std::any_of(std::begin(TextsOfQt), std::end(TextsOfQt), isSame);
    if (!isKnown) return QString();
    const QString translated = QCoreApplication::translate(QtTextsContext, sourceText);
    return translated == QLatin1String(sourceText) ? QString() : translated;
}
