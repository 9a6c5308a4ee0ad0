// SPDX-License-Identifier: Apache-2.0
#include <apps/mcserver/plugin/driverplugin.h>

#include <platform/device/iorvdriver.h>
#include <platform/device/iorvdriverplugin.h>

#include <QtCore/QFileInfo>
#include <QtCore/QJsonObject>
#include <QtCore/QPluginLoader>

#include <exception>

namespace {

const QString& OwnIid() {
    static const auto& iid = *new QString(QStringLiteral(OrvDriverPlugin_iid));
    return iid;
}

QString IidFault(const QString& iid) {
    const QString own = OwnIid();
    const int slash = own.lastIndexOf(QLatin1Char('/'));
    if (iid == own) return QString();
    if (iid.left(slash + 1) != own.left(slash + 1))
        return QStringLiteral("offers no device, but '%1'").arg(iid);
    return QStringLiteral("is built for version %1 of the device interface, and this server has version %2")
        .arg(iid.mid(slash + 1), own.mid(slash + 1));
}

/// Runs \a call, which belongs to somebody else. \return what it threw; empty if it did not.
template <class Call>
QString ThrownBy(const Call& call) {
    try {
        call();
    } catch (const std::exception& thrown) {
        return QStringLiteral("throws: %1").arg(QString::fromUtf8(thrown.what()).simplified());
    } catch (...) {
        return QStringLiteral("throws");
    }
    return QString();
}

QString LoadPlugin(QPluginLoader& loader, IOrvDriverPlugin** plugin) {
    const QString iid = loader.metaData().value(QStringLiteral("IID")).toString();
    if (iid.isEmpty()) {
        loader.load();  // only for the reason: nothing of it runs
        return QStringLiteral("is no plugin: %1").arg(loader.errorString().simplified());
    }
    QString fault = IidFault(iid);
    if (!fault.isEmpty()) return fault;
    fault = ThrownBy([&] { *plugin = qobject_cast<IOrvDriverPlugin*>(loader.instance()); });
    if (!fault.isEmpty() || *plugin != nullptr) return fault;
    if (!loader.isLoaded())
        return QStringLiteral("cannot be loaded: %1").arg(loader.errorString().simplified());
    return QStringLiteral("does not offer what it says");
}

QString CreateDriver(IOrvDriverPlugin& plugin, const QString& options, std::unique_ptr<IOrvDriver>* driver) {
    QString reason;
    const QString thrown = ThrownBy([&] { driver->reset(plugin.Create(options, &reason)); });
    if (!thrown.isEmpty() || *driver != nullptr) return thrown;
    reason = reason.simplified();
    return QStringLiteral("makes no device: %1")
        .arg(reason.isEmpty() ? QStringLiteral("it does not say why") : reason);
}

}  // namespace

std::unique_ptr<IOrvDriver> driverplugin::Load(const QString& file, const QString& options, QString* error) {
    const QFileInfo info(file);
    if (!info.isFile()) {
        *error = QStringLiteral("there is no file '%1'").arg(file);
        return nullptr;
    }
    QPluginLoader loader(info.absoluteFilePath());
    IOrvDriverPlugin* plugin = nullptr;
    std::unique_ptr<IOrvDriver> driver;
    QString fault = LoadPlugin(loader, &plugin);
    if (fault.isEmpty()) fault = CreateDriver(*plugin, options, &driver);
    if (!fault.isEmpty()) *error = QStringLiteral("'%1' %2").arg(file, fault);
    return driver;
}
