// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/helpmenu.h>

#include <apps/pages/pagehelp.h>

#include <QtCore/QCoreApplication>
#include <QtWidgets/QAction>
#include <QtWidgets/QMainWindow>
#include <QtWidgets/QMenu>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QWhatsThis>

namespace {

struct HelpMenuTexts {
    Q_DECLARE_TR_FUNCTIONS(HelpMenu)
};

}  // namespace

void helpmenu::AddTo(QMainWindow& window, const Content& content) {
    QMenu* const menu = window.menuBar()->addMenu(HelpMenuTexts::tr("&Help"));
    const auto showPage = [pages = content.pages] { pagehelp::ShowCurrent(*pages()); };
    menu->addAction(HelpMenuTexts::tr("This &page"), &window, showPage, QKeySequence::HelpContents);
    QAction* const ask = QWhatsThis::createAction(menu);
    ask->setText(HelpMenuTexts::tr("&What is this?"));
    menu->addAction(ask);
    menu->addAction(HelpMenuTexts::tr("&Keys..."), &window,
                    [&window, keys = content.keys] { KeysDialog(keys(), &window).exec(); });
    menu->addAction(HelpMenuTexts::tr("&About"), &window, [&window, about = content.about] {
        QMessageBox::about(&window, HelpMenuTexts::tr("About"), about);
    });
}
