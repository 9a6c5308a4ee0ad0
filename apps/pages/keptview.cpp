// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/keptview.h>

#include <platform/config/icfg.h>

#include <QtWidgets/QHeaderView>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QTabWidget>
#include <QtWidgets/QTableView>

#include <memory>

namespace {

constexpr char PageKey[] = "Page";

QString KeyOf(const QWidget& widget) {
    return widget.objectName().isEmpty() ? QString() : QStringLiteral("Layout_%1").arg(widget.objectName());
}

/// Calls \a visit with the key of each arrangement in \a pages, and what has it.
template <class Visit>
void ForEachArrangement(const QTabWidget& pages, Visit visit) {
    for (auto* const splitter : pages.findChildren<QSplitter*>())
        if (!KeyOf(*splitter).isEmpty()) visit(KeyOf(*splitter), *splitter);
    for (auto* const table : pages.findChildren<QTableView*>())
        if (!KeyOf(*table).isEmpty()) visit(KeyOf(*table), *table->horizontalHeader());
}

}  // namespace

void keptview::Restore(ICfg& cfg, QTabWidget& pages) {
    const std::unique_ptr<ICfg> section(cfg.OpenSection(QLatin1String(SectionName)));
    if (!section) return;
    const QString page = section->ReadString(QLatin1String(PageKey), QString());
    for (int i = 0; i < pages.count(); ++i)
        if (!page.isEmpty() && pages.widget(i)->objectName() == page) pages.setCurrentIndex(i);
    ForEachArrangement(pages, [&](const QString& key, auto& arranged) {
        const QString state = section->ReadString(key, QString());
        if (!state.isEmpty()) arranged.restoreState(QByteArray::fromHex(state.toLatin1()));
    });
}

void keptview::Keep(ICfg& cfg, const QTabWidget& pages) {
    const std::unique_ptr<ICfg> section(cfg.ProvideSection(QLatin1String(SectionName)));
    section->WriteString(QLatin1String(PageKey), pages.currentWidget()->objectName());
    ForEachArrangement(pages, [&](const QString& key, const auto& arranged) {
        section->WriteString(key, QString::fromLatin1(arranged.saveState().toHex()));
    });
    section->CommitKey(QLatin1String(PageKey));
}
