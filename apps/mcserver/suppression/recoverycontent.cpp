// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/suppression/recoverycontent.h>

#include <devicecontrol/multichannelserver/common/mcskeys.h>

#include <QtCore/QCryptographicHash>
#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <cmath>
#include <limits>

namespace {

constexpr char RecoveryTitle[] = "mcserver suppression recovery 1 ";
constexpr int MostInputs = 1024;  // far more than a module has

constexpr QLatin1String ConfigurationKey = mcskeys::detail::Key("configuration");
constexpr QLatin1String MarkKey = mcskeys::detail::Key("mark");
constexpr QLatin1String TimeKey = mcskeys::detail::Key("time");
constexpr QLatin1String ModulesKey = mcskeys::detail::Key("modules");
constexpr QLatin1String IndexKey = mcskeys::detail::Key("index");
constexpr QLatin1String TypeKey = mcskeys::detail::Key("type");
constexpr QLatin1String AddressKey = mcskeys::detail::Key("address");
constexpr QLatin1String PollIntervalKey = mcskeys::detail::Key("pollInterval");
constexpr QLatin1String LabelKey = mcskeys::detail::Key("label");
constexpr QLatin1String LabelsKey = mcskeys::detail::Key("labels");
constexpr QLatin1String FrequenciesKey = mcskeys::detail::Key("frequencies");

QByteArray RecoveryFirstLine(const QByteArray& body) {
    return RecoveryTitle + QCryptographicHash::hash(body, QCryptographicHash::Sha256).toHex() + '\n';
}

QJsonObject ModuleToJson(const ModuleSettings& module) {
    QJsonArray frequencies;
    QJsonArray labels;
    for (const QString& label : module.labels)
        labels.append(label);
    for (const double hz : module.frequencies)
        frequencies.append(hz);
    return {{IndexKey, module.index},      {TypeKey, module.type},
            {AddressKey, module.address},  {PollIntervalKey, double(module.pollInterval.count())},
            {FrequenciesKey, frequencies}, {LabelsKey, labels},
            {LabelKey, module.label}};
}

/// Whether \a value is a whole number from \a least to \a most.
bool IsWhole(const QJsonValue& value, double least, double most) {
    const double number = value.toDouble(std::numeric_limits<double>::quiet_NaN());
    return number >= least && number <= most && number == std::floor(number);
}

bool ModuleFromJson(const QJsonObject& json, ModuleSettings* module) {
    const QJsonArray frequencies = json.value(FrequenciesKey).toArray();
    const QJsonArray labels = json.value(LabelsKey).toArray();
    if (!IsWhole(json.value(IndexKey), 0, std::numeric_limits<int>::max()) ||
        !IsWhole(json.value(PollIntervalKey), 0, std::numeric_limits<quint32>::max()) ||
        !json.value(TypeKey).isString() || !json.value(AddressKey).isString() ||
        frequencies.size() > MostInputs || labels.size() > MostInputs)
        return false;
    module->index = json.value(IndexKey).toInt();
    module->type = json.value(TypeKey).toString();
    module->address = json.value(AddressKey).toString();
    module->label = json.value(LabelKey).toString();
    module->pollInterval = PollInterval(static_cast<quint32>(json.value(PollIntervalKey).toDouble()));
    for (const QJsonValue& hz : frequencies) {
        if (!hz.isDouble()) return false;
        module->frequencies.push_back(hz.toDouble());
    }
    for (const QJsonValue& label : labels)
        module->labels.push_back(label.toString());
    return true;
}

}  // namespace

QByteArray RecoveryContent::ToBytes() const {
    QJsonArray list;
    for (const ModuleSettings& module : modules)
        list.append(ModuleToJson(module));
    const QJsonObject json{{ConfigurationKey, configuration},
                           {MarkKey, QString::fromLatin1(mark)},
                           {TimeKey, time.toString(Qt::ISODate)},
                           {ModulesKey, list}};
    const QByteArray body = QJsonDocument(json).toJson(QJsonDocument::Compact) + '\n';
    return RecoveryFirstLine(body) + body;
}

bool RecoveryContent::FromBytes(const QByteArray& bytes, QString* defect) {
    const auto fail = [defect](const char* what) {
        *defect = QString::fromLatin1(what);
        return false;
    };
    if (bytes.size() > MaxBytes) return fail("it is too large");
    if (!bytes.startsWith(RecoveryTitle)) return fail("it does not begin as such a file does");
    const QByteArray body = bytes.mid(bytes.indexOf('\n') + 1);
    if (bytes != RecoveryFirstLine(body) + body) return fail("its sum is not that of what is in it");
    const QJsonObject json = QJsonDocument::fromJson(body).object();
    if (!json.value(ModulesKey).isArray()) return fail("it has no list of modules");
    *this = RecoveryContent();
    configuration = json.value(ConfigurationKey).toString();
    mark = json.value(MarkKey).toString().toLatin1();
    time = QDateTime::fromString(json.value(TimeKey).toString(), Qt::ISODate);
    for (const QJsonValue& module : json.value(ModulesKey).toArray()) {
        modules.emplace_back();
        if (!ModuleFromJson(module.toObject(), &modules.back()))
            return fail("it has a module that cannot be one");
    }
    return true;
}
