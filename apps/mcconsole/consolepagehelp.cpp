// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/consolepagehelp.h>

#include <QtCore/QCoreApplication>

std::vector<pagehelp::Text> ConsolePageHelp() {
    return {
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
        {"Events",
         QT_TRANSLATE_NOOP(
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
        {"MyMpxORV",
         QT_TRANSLATE_NOOP(
             "PageHelp",
             "Your own MpxORV: type a frequency and press Enter to tune it, ask the server for other "
             "things, and see what it answered and what you may do.")},
    };
}
