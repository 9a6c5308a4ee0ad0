// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/pagehelp.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QWhatsThis>

namespace {

struct PageHelp {
    const char* page;
    const char* text;
};

constexpr PageHelp PageHelps[] = {
    {"Overview",
     QT_TRANSLATE_NOOP(
         "PageHelp",
         "What matters at a glance: your own MpxORV and its frequency, what the server answered, who "
         "is tuned to what, and how the device and the connection have been lately.")},
    {"Status",
     QT_TRANSLATE_NOOP(
         "PageHelp",
         "What the server and its device do. What is dimmed and hatched is not live: it is the last "
         "content known.")},
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
    {"Events", QT_TRANSLATE_NOOP(
                   "PageHelp",
                   "What happened at the server, also before this console was there: by severity, source and "
                   "person, to be filtered, searched and exported.")},
    {"Suppression",
     QT_TRANSLATE_NOOP(
         "PageHelp",
         "Which ground transmitters are on the air, and which frequencies nobody watches because a "
         "module does not answer.")},
    {"MpxORVs",
     QT_TRANSLATE_NOOP(
         "PageHelp",
         "All MpxORVs, yours in bold, the job master on top. A click on a title sorts, Ctrl+F filters. "
         "Below are the comment and the policies of the one that is chosen.")},
    {"MpxORVStatus",
     QT_TRANSLATE_NOOP("PageHelp",
                       "All MpxORVs in the server's own words, in the order in which they came.")},
    {"MyMpxORV", QT_TRANSLATE_NOOP(
                     "PageHelp",
                     "Your own MpxORV: type a frequency and press Enter to tune it, ask the server for other "
                     "things, and see what it answered and what you may do.")},
};

}  // namespace

QString pagehelp::TextOf(const QString& page) {
    for (const PageHelp& help : PageHelps)
        if (page == QLatin1String(help.page)) return QCoreApplication::translate("PageHelp", help.text);
    return QString();
}

void pagehelp::Describe(QTabWidget& tabs) {
    for (int i = 0; i < tabs.count(); ++i)
        tabs.widget(i)->setWhatsThis(TextOf(tabs.widget(i)->objectName()));
}

void pagehelp::ShowCurrent(const QTabWidget& tabs) {
    const QWidget* const page = tabs.currentWidget();
    if (page == nullptr || page->whatsThis().isEmpty()) return;
    QWhatsThis::showText(page->mapToGlobal(page->rect().center()), page->whatsThis(), tabs.currentWidget());
}
