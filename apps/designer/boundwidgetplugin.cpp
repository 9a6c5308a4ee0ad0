// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/boundwidgetplugin.h>

#include <apps/designer/pathmenufactory.h>
#include <apps/designer/plugintexts.h>

#include <QtDesigner/QDesignerFormEditorInterface>
#include <QtGui/QIcon>
#include <QtGui/QPainter>
#include <QtGui/QPixmap>

namespace {

constexpr int IconSize = 24;

/// The letters of a widget in a frame that is blue for one value, and green for several.
QIcon MakeIcon(const BoundWidget& widget) {
    QPixmap picture(IconSize, IconSize);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(widget.isDisplay ? QColor(0x1b, 0x7f, 0x4b) : QColor(0x1f, 0x5f, 0xa8), 2));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(QRectF(1.5, 3.5, 21, 17), 3, 3);
    QFont font = painter.font();
    font.setPixelSize(12);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(picture.rect(), Qt::AlignCenter, QString::fromLatin1(widget.sign));
    return QIcon(picture);
}

}  // namespace

BoundWidgetPlugin::BoundWidgetPlugin(const BoundWidget& widget, QObject* parent)
    : QObject(parent), m_widget(widget) {}

QString BoundWidgetPlugin::name() const {
    return QString::fromLatin1(m_widget.className);
}

QString BoundWidgetPlugin::group() const {
    return m_widget.isDisplay ? tr("MultiChannelServer displays") : tr("MultiChannelServer values");
}

QString BoundWidgetPlugin::toolTip() const {
    return tr(m_widget.toolTip);
}

QString BoundWidgetPlugin::whatsThis() const {
    return tr(m_widget.explanation);
}

QString BoundWidgetPlugin::includeFile() const {
    return QStringLiteral("<%1>").arg(QString::fromLatin1(m_widget.header));
}

QIcon BoundWidgetPlugin::icon() const {
    return MakeIcon(m_widget);
}

QWidget* BoundWidgetPlugin::createWidget(QWidget* parent) {
    return m_widget.make(parent, m_place);
}

void BoundWidgetPlugin::initialize(QDesignerFormEditorInterface* core) {
    if (core == nullptr) return;
    m_place = BoundWidget::EPlace::Tool;
    PluginTexts::Install(*core);
    PathMenuFactory::Install(*core);
}
