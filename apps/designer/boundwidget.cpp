// SPDX-License-Identifier: Apache-2.0
#include <apps/designer/boundwidget.h>

#include <apps/designer/content.h>

#include <devicecontrol/multichannelserver/common/gts/gtsdisplay.h>
#include <devicecontrol/multichannelserver/common/mcscommandsdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsconfigdisplay.h>
#include <devicecontrol/multichannelserver/common/mcslogdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h>
#include <devicecontrol/multichannelserver/common/mcsstatusdisplay.h>

#include <platform/widgets/vccheckbox.h>
#include <platform/widgets/vccomboboxclassic.h>
#include <platform/widgets/vclabel.h>
#include <platform/widgets/vclineedit.h>
#include <platform/widgets/vcnumericfloatspin.h>
#include <platform/widgets/vcpushbutton.h>

#include <QtCore/QObject>

namespace {

using EPlace = BoundWidget::EPlace;

template <class W>
QWidget* Make(QWidget* parent, EPlace) {
    return new W(parent);
}

/// The real one polls modules and saves the configuration, which nobody wants of a form that is laid out.
QWidget* MakeSuppression(QWidget* parent, EPlace place) {
    if (place == EPlace::Tool) return new GTSDisplay(GTSDisplay::LookOnly(), parent);
    return new GTSDisplay(parent);
}

constexpr const char* Path = "valuePath";
constexpr const char* Paths = "valuePaths";

std::vector<BoundWidget> Widgets() {
    return {
        {"VCLabel",
         "platform/widgets/vclabel.h",
         "Ab",
         false,
         Path,
         content::AnyValue,
         {120, 22},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows a value of any type as text"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Shows the value at valuePath. While the boolean at noValuePath is true, it shows \"- - -\"."),
         Make<VCLabel>},
        {"VCLineEdit",
         "platform/widgets/vclineedit.h",
         "I",
         false,
         Path,
         content::Text,
         {140, 26},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows and edits a text"),
         QT_TRANSLATE_NOOP("BoundWidgetPlugin",
                           "Shows the text at valuePath. Enter or leaving the field sends what was typed, "
                           "Escape restores."),
         Make<VCLineEdit>},
        {"VCCheckBox",
         "platform/widgets/vccheckbox.h",
         "x",
         false,
         Path,
         content::Boolean,
         {120, 24},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows and switches a boolean"),
         QT_TRANSLATE_NOOP("BoundWidgetPlugin",
                           "Shows the boolean at valuePath; a click sends the other one."),
         Make<VCCheckBox>},
        {"VCPushButton",
         "platform/widgets/vcpushbutton.h",
         "OK",
         false,
         Path,
         content::Boolean,
         {100, 28},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Asks for something by a boolean"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Sets the boolean at valuePath true, and is held down until whoever carries it out has set it "
             "false."),
         Make<VCPushButton>},
        {"VCComboBoxClassic",
         "platform/widgets/vccomboboxclassic.h",
         "v",
         false,
         Path,
         content::Selection,
         {120, 26},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows the choices of a selection, and makes one current"),
         QT_TRANSLATE_NOOP("BoundWidgetPlugin",
                           "Shows the selection at valuePath; choosing an item sends it."),
         Make<VCComboBoxClassic>},
        {"VCNumericFloatSpin",
         "platform/widgets/vcnumericfloatspin.h",
         "12",
         false,
         Path,
         content::Integer | content::Number,
         {120, 26},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows and edits a number within its limits"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Shows the number at valuePath: an integer if \"integer\" is set, else a floating-point number, "
             "which is shown divided by unitFactor, with unitDecimals and unit behind it."),
         Make<VCNumericFloatSpin>},
        {"MCSStatusDisplay",
         "devicecontrol/multichannelserver/common/mcsstatusdisplay.h",
         "S",
         true,
         Path,
         content::Node,
         {300, 190},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows the state of the server"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Shows the status below the node at valuePath, such as /MultiChannelServer/Status."),
         Make<MCSStatusDisplay>},
        {"MCSConfigDisplay",
         "devicecontrol/multichannelserver/common/mcsconfigdisplay.h",
         "C",
         true,
         Path,
         content::Node,
         {380, 270},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Edits the configuration of the server"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Edits the configuration below the node at valuePath, such as /MultiChannelServer/Config. "
             "bootConfigGroup and jobConfigGroup say which of its groups are shown."),
         Make<MCSConfigDisplay>},
        {"MCSCommandsDisplay",
         "devicecontrol/multichannelserver/common/mcscommandsdisplay.h",
         "!",
         true,
         Path,
         content::Node,
         {260, 40},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Switches whether the server is connected to its device"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Uses the commands below the node at valuePath, such as /MultiChannelServer/Command."),
         Make<MCSCommandsDisplay>},
        {"MCSLogDisplay",
         "devicecontrol/multichannelserver/common/mcslogdisplay.h",
         "L",
         true,
         Path,
         content::Text,
         {400, 200},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "Shows log messages as they arrive"),
         QT_TRANSLATE_NOOP("BoundWidgetPlugin",
                           "Follows the text at valuePath, such as /MultiChannelServer/Status/LogMessage."),
         Make<MCSLogDisplay>},
        {"MCSMpxORVStatusListDisplay",
         "devicecontrol/multichannelserver/common/mcsmpxorvstatuslistdisplay.h",
         "M",
         true,
         Paths,
         content::Node,
         {420, 160},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "A table of MpxORVs"),
         QT_TRANSLATE_NOOP(
             "BoundWidgetPlugin",
             "Shows the MpxORVs below the nodes at valuePaths, such as /MultiChannelServer/StaticMpxORVs and "
             "/MultiChannelServer/DynamicMpxORVs."),
         Make<MCSMpxORVStatusListDisplay>},
        {"GTSDisplay",
         "devicecontrol/multichannelserver/common/gts/gtsdisplay.h",
         "G",
         true,
         nullptr,
         content::None,
         {400, 180},
         QT_TRANSLATE_NOOP("BoundWidgetPlugin", "The modules of the ground transmitter suppression"),
         QT_TRANSLATE_NOOP("BoundWidgetPlugin",
                           "Polls the modules that the program's configuration names, and lets people edit "
                           "them. It needs no "
                           "path, and a program has one at most. On a form it only looks like that."),
         MakeSuppression},
    };
}

}  // namespace

const std::vector<BoundWidget>& BoundWidget::All() {
    static const auto& all = *new std::vector<BoundWidget>(Widgets());
    return all;
}

const BoundWidget* BoundWidget::Of(const QObject* object) {
    if (object == nullptr) return nullptr;
    for (const BoundWidget& widget : All())
        if (qstrcmp(object->metaObject()->className(), widget.className) == 0) return &widget;
    return nullptr;
}

bool BoundWidget::HasList() const {
    return property == Paths;
}

QString BoundWidget::ToXml() const {
    const QString name = QString::fromLatin1(className);
    const QString object = name.at(0).toLower() + name.mid(1);
    // What stands behind a number is no text to translate.
    const QString unit =
        QStringLiteral("<stringpropertyspecification name='unit' type='singleline' notr='true'/>");
    return QStringLiteral(
               "<ui language='c++' displayname='%1'><widget class='%1' name='%2'>"
               "<property name='geometry'><rect><x>0</x><y>0</y><width>%3</width><height>%4</height></rect>"
               "</property></widget><customwidgets><customwidget><class>%1</class>"
               "<propertyspecifications>%5</propertyspecifications></customwidget></customwidgets></ui>")
        .arg(name, object, QString::number(size.width()), QString::number(size.height()), unit);
}
