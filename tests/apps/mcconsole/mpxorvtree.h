// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <devicecontrol/multichannelserver/common/mcsmpxorvstatus.h>
#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/valueaccess.h>

#include <QtCore/QString>

/// MpxORVs in the tree, as a server tells of them.
class MpxOrvTree {
  public:
    static QString StaticPath() { return QStringLiteral("/Server/StaticMpxORVs"); }
    static QString DynamicPath() { return QStringLiteral("/Server/DynamicMpxORVs"); }
    static QString Static(const char* name) { return StaticPath() + Below(name); }
    static QString Dynamic(const char* name) { return DynamicPath() + Below(name); }
    static QString Below(const char* name) { return QLatin1Char('/') + QString::fromUtf8(name); }

    MpxOrvTree() {
        m_tree.ProvideNode(StaticPath());
        m_tree.ProvideNode(DynamicPath());
    }

    /// All that a new one has.
    static void Add(const QString& path) {
        MCSMpxORVStatus status(path + QLatin1String("/Status"));
        status.GetOperationModeValue()->Select(OperationIdle, nullptr);
        Number(path, 0.0);
        for (const char* const key : {"TunedSince", "BlankingSwitchedBy", "BlankingSwitchedSince"})
            Text(path, key, QString());
        Flag(path + QLatin1String("/Blanking"), true);
    }
    static void Remove(const QString& path) {
        values::Tree* const tree = values::Tree::Instance();
        tree->Delete(tree->FindItem(path));
    }
    static void Tune(const QString& path, double hz, const char* since = "2020-02-03T04:05:06.000Z") {
        Text(path, "TunedSince", QString::fromLatin1(since));
        Number(path, hz);
        Select(path, hz != 0.0 ? OperationFfm : OperationIdle);
    }
    static void MakeMaster(const QString& path, bool isMaster) {
        Flag(path + QLatin1String("/Status/IsMaster"), isMaster);
        Select(path, isMaster ? OperationScan : OperationIdle);
    }
    static void Comment(const QString& path, const char* comment) {
        Text(path, "Comment", QString::fromUtf8(comment));
    }
    static void Select(const QString& path, EOperationMode mode) {
        values::FindValue<values::ValueSelection>(path + QLatin1String("/Status/OperationMode"), nullptr,
                                                  nullptr)
            ->Select(mode);
    }
    static void Text(const QString& path, const char* key, const QString& text) {
        values::ProvideValue<values::Value<QString>>(path + QLatin1String("/Status/") + QLatin1String(key),
                                                     text, true, nullptr);
    }
    static void Number(const QString& path, double hz) {
        values::ProvideValue<values::ValueNumeric<double>>(path + QLatin1String("/Status/TunedFrequency"), hz,
                                                           0.0, 3e9, true, nullptr);
    }
    static void Flag(const QString& path, bool isOn) {
        values::ProvideValue<values::Value<bool>>(path, isOn, true, nullptr);
    }

  private:
    values::Tree m_tree;
};
