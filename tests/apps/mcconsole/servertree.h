// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>

#include <platform/device/stddevicedefinition.h>
#include <platform/values/tree.h>
#include <platform/values/value.h>
#include <platform/values/valuelist.h>
#include <platform/values/valuenumeric.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

#include <memory>
#include <vector>

/// A server's tree as a console mirrors it, whose server the test plays. What is set is there.
class ServerTree {
  public:
    static QString BasePath() { return QStringLiteral("/Server"); }
    static QString OwnPath() { return QStringLiteral("/Server/DynamicMpxORVs/Console"); }

    void Text(const char* path, const char* text) {
        Provide<values::Value<QString>>(Full(path))->SetValue(QString::fromUtf8(text));
    }
    void Flag(const char* path, bool flag) { Provide<values::Value<bool>>(Full(path))->SetValue(flag); }
    void Int(const char* path, int number) { Provide<values::Value<int>>(Full(path))->SetValue(number); }
    void Number(const char* path, double number) {
        Provide<values::ValueNumeric<double>>(Full(path))->SetValue(number);
    }
    void List(const char* path, std::vector<double> items) {
        Provide<values::ValueList<double>>(Full(path))->SetItems(std::move(items));
    }
    void Key(const char* path, int key) {
        auto* const selection = Provide<values::ValueSelection>(Full(path));
        if (selection->Count() == 0)
            for (const int each : {0, 1, 2, 3, 4, 5, 6, 7, 8, 16, 32})
                selection->AddItem(QString::number(each), each, each);
        selection->Select(key);
    }

    void Remove(const char* path) { tree.Delete(tree.FindItem(Full(path))); }

    /// A device that is ready and sweeps, without a master, with input modules that answer.
    void MakeUsual() {
        Key("Status/BootState", BootReady);
        Key("Status/OperationMode", OperationScan);
        Flag("Status/Online", true);
        Text("Status/ConnectionState", "connected");
        Flag("Command/ShallBeConnected", true);
        Text("Config/DeviceName", "mast-north");
        Text("Status/Master/Name", "");
        Text("Status/Master/Since", "");
        Suppress(2, 2, {}, {});
    }
    void Suppress(int modules, int answering, std::vector<double> keyed, std::vector<double> unsupervised) {
        Int("Status/Suppression/ModuleCount", modules);
        Int("Status/Suppression/AnsweringModules", answering);
        List("Status/Suppression/KeyedFrequencies", std::move(keyed));
        List("Status/Suppression/UnsupervisedFrequencies", std::move(unsupervised));
    }
    void Tune(double hz) {
        Key("DynamicMpxORVs/Console/Status/OperationMode", hz > 0 ? OperationFfm : OperationIdle);
        Number("DynamicMpxORVs/Console/Status/TunedFrequency", hz);
    }

    /// The last request of the own MpxORV ended like that.
    void Answer(ECode kind) { Answer(kind, QStringLiteral("the reason")); }
    void Answer(ECode kind, const CodedText& said) {
        const CodedText answer(kind, {said});
        Text("DynamicMpxORVs/Console/Request/AnswerCode", answer.ToJsonText().toUtf8());
        Text("DynamicMpxORVs/Console/Request/Answer", answer.ToEnglish().toUtf8());
    }

    template <class V>
    V* Find(const char* path) {
        return dynamic_cast<V*>(tree.FindItem(Full(path)));
    }

    values::Tree tree;

  private:
    static QString Full(const char* path) {
        return BasePath() + QLatin1Char('/') + QString::fromLatin1(path);
    }
    template <class V>
    V* Provide(const QString& path) {
        if (auto* const found = dynamic_cast<V*>(tree.FindItem(path))) return found;
        auto* const value = new V;
        value->SetName(path.section(QLatin1Char('/'), -1));
        tree.AddValue(path.section(QLatin1Char('/'), 0, -2), value);
        return value;
    }
};
