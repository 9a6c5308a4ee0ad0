// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/boundwidget.h>

#include <platform/config/cfgcenter.h>
#include <platform/values/tree.h>

#include <tests/apps/designer/plugin.h>
#include <tests/support/printing.h>

#include <gtest/gtest.h>

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QPluginLoader>
#include <QtCore/QTemporaryDir>
#include <QtDesigner/QFormBuilder>
#include <QtGui/QIcon>
#include <QtUiPlugin/QDesignerCustomWidgetCollectionInterface>
#include <QtUiPlugin/QDesignerCustomWidgetInterface>
#include <QtUiTools/QUiLoader>
#include <QtXml/QDomDocument>

namespace {

QStringList Names() {
    QStringList names;
    for (const BoundWidget& widget : BoundWidget::All())
        names << QString::fromLatin1(widget.className);
    return names;
}

QList<QDesignerCustomWidgetInterface*> WidgetsOf(QPluginLoader& loader) {
    auto* const all = qobject_cast<QDesignerCustomWidgetCollectionInterface*>(loader.instance());
    return all != nullptr ? all->customWidgets() : QList<QDesignerCustomWidgetInterface*>();
}

TEST(DesignerPlugin, KnowsEveryWidgetAndDisplay) {
    QPluginLoader loader(plugin::File());
    QStringList names;
    for (const QDesignerCustomWidgetInterface* const widget : WidgetsOf(loader))
        names << widget->name();
    EXPECT_EQ(names, Names()) << loader.errorString().toStdString();
    EXPECT_EQ(names.size(), 12);
}

TEST(DesignerPlugin, SaysOfEachWhatPeopleLookFor) {
    QPluginLoader loader(plugin::File());
    for (const QDesignerCustomWidgetInterface* const widget : WidgetsOf(loader)) {
        SCOPED_TRACE(widget->name().toStdString());
        EXPECT_FALSE(widget->icon().isNull());
        EXPECT_TRUE(widget->group().startsWith(QLatin1String("MultiChannelServer")));
        EXPECT_FALSE(widget->toolTip().isEmpty());
        EXPECT_FALSE(widget->whatsThis().isEmpty());
        EXPECT_TRUE(widget->includeFile().endsWith(widget->name().toLower() + QLatin1String(".h>")));
        EXPECT_FALSE(widget->isContainer());
    }
}

TEST(DesignerPlugin, GivesEachAFormToBeginWith) {
    QPluginLoader loader(plugin::File());
    for (const QDesignerCustomWidgetInterface* const widget : WidgetsOf(loader)) {
        SCOPED_TRACE(widget->name().toStdString());
        QDomDocument document;
        QString error;
        ASSERT_TRUE(document.setContent(widget->domXml(), &error)) << error.toStdString();
        const QDomElement element = document.documentElement().firstChildElement(QStringLiteral("widget"));
        EXPECT_EQ(element.attribute(QStringLiteral("class")), widget->name());
        EXPECT_GE(element.elementsByTagName(QStringLiteral("width")).at(0).toElement().text().toInt(), 100);
    }
}

// Where forms are laid out there is no tree.
TEST(DesignerPlugin, MakesEachWithoutATree) {
    ASSERT_EQ(values::Tree::Instance(), nullptr);
    for (const BoundWidget& widget : BoundWidget::All()) {
        SCOPED_TRACE(widget.className);
        const std::unique_ptr<QWidget> made(widget.make(nullptr, BoundWidget::EPlace::Tool));
        ASSERT_NE(made, nullptr);
        EXPECT_STREQ(made->metaObject()->className(), widget.className);
        if (widget.property != nullptr) {
            EXPECT_TRUE(made->setProperty(widget.property, QByteArray("/a/b")));
            EXPECT_EQ(made->property(widget.property), QVariant(QByteArray("/a/b")));
        }
        made->resize(widget.size);
        made->show();
        EXPECT_FALSE(made->grab().isNull());
    }
}

class MadeInProgram : public testing::TestWithParam<QString> {
  protected:
    MadeInProgram() { CfgCenter::Instance().SetStorePath(folder.filePath(QStringLiteral("test.ini"))); }
    ~MadeInProgram() override { CfgCenter::Instance().SetStorePath(QString()); }

    QTemporaryDir folder;
    values::Tree tree;
};

TEST_P(MadeInProgram, ByALoader) {
    const std::unique_ptr<QWidget> form =
        plugin::Load(plugin::Form(GetParam().toLatin1().constData(), QByteArray()));
    ASSERT_NE(form, nullptr);
    const auto* const widget = form->findChild<QWidget*>(QStringLiteral("widget"));
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), GetParam());
}

TEST_P(MadeInProgram, ByAFormBuilder) {
    QFormBuilder builder;
    builder.setPluginPath({QFileInfo(plugin::File()).path()});
    const QByteArray text = plugin::Form(GetParam().toLatin1().constData(), QByteArray());
    QBuffer buffer;
    buffer.setData(text);
    buffer.open(QIODevice::ReadOnly);
    const std::unique_ptr<QWidget> form(builder.load(&buffer, nullptr));
    ASSERT_NE(form, nullptr) << builder.errorString().toStdString();
    const auto* const widget = form->findChild<QWidget*>(QStringLiteral("widget"));
    ASSERT_NE(widget, nullptr);
    EXPECT_EQ(QString::fromLatin1(widget->metaObject()->className()), GetParam());
}

INSTANTIATE_TEST_SUITE_P(EachWidget, MadeInProgram, testing::ValuesIn(Names()),
                         [](const auto& row) { return row.param.toStdString(); });

// What Qt notes in a plugin is the version that it was built with.
TEST(DesignerPlugin, IsRefusedByAnotherQt) {
    QFile built(plugin::File());
    ASSERT_TRUE(built.open(QIODevice::ReadOnly));
    QByteArray bytes = built.readAll();
    const int mark = bytes.indexOf("QTMETADATA !");
    ASSERT_GE(mark, 0);
    constexpr int minorVersion = 14;  // behind the mark: of the mark itself, of Qt, and its minor part
    ASSERT_EQ(bytes.at(mark + minorVersion), char(QT_VERSION_MINOR));
    bytes[mark + minorVersion] = char(QT_VERSION_MINOR + 1);
    const QTemporaryDir folder;
    QFile other(folder.filePath(QStringLiteral("other.so")));
    ASSERT_TRUE(other.open(QIODevice::WriteOnly));
    other.write(bytes);
    other.close();
    QPluginLoader loader(other.fileName());
    EXPECT_FALSE(loader.load());
    EXPECT_TRUE(loader.errorString().contains(QLatin1String("uses incompatible Qt library")))
        << loader.errorString().toStdString();
}

}  // namespace
