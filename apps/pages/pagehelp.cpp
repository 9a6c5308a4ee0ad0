// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/pagehelp.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QWhatsThis>

#include <algorithm>
#include <iterator>

namespace {

constexpr pagehelp::Text SharedTexts[] = {
    {"Configuration",
     QT_TRANSLATE_NOOP(
         "PageHelp",
         "How the server is configured. A change holds at once, or with the next connection to the "
         "device where that is said; it is kept for the next start only when it is saved. A bar marks "
         "what is not saved.")},
    {"Commands",
     QT_TRANSLATE_NOOP("PageHelp",
                       "Whether the server holds its device. Letting go of it takes the frequencies and the "
                       "mastership from everybody; for ten seconds that can be undone.")},
    {"Log",
     QT_TRANSLATE_NOOP("PageHelp",
                       "What happens at the server, as it says it, a line each. The page holds 1000 lines.")},
};

template <class Texts>
QString FindIn(const Texts& texts, const QString& page) {
    const auto found = std::find_if(std::begin(texts), std::end(texts), [&](const pagehelp::Text& text) {
        return page == QLatin1String(text.page);
    });
    return found == std::end(texts) ? QString() : QCoreApplication::translate("PageHelp", found->text);
}

}  // namespace

void pagehelp::Describe(QTabWidget& tabs, const std::vector<Text>& own) {
    for (int i = 0; i < tabs.count(); ++i) {
        QWidget& page = *tabs.widget(i);
        const QString text = FindIn(own, page.objectName());
        page.setWhatsThis(text.isEmpty() ? FindIn(SharedTexts, page.objectName()) : text);
    }
}

void pagehelp::ShowCurrent(const QTabWidget& tabs) {
    const QWidget* const page = tabs.currentWidget();
    if (page == nullptr || page->whatsThis().isEmpty()) return;
    QWhatsThis::showText(page->mapToGlobal(page->rect().center()), page->whatsThis(), tabs.currentWidget());
}
