// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/common/codedtext.h>
#include <apps/mcserver/mpxorv/erequest.h>
#include <apps/pages/serverkeys.h>

#include <platform/values/observable.h>
#include <platform/values/value.h>
#include <platform/values/valueselection.h>

#include <QtCore/QString>

#include <chrono>
#include <functional>

/// The values below "Request" of one MpxORV, by which its clients ask for something, and "Answer" with
/// "AnswerCode", which says the same by a code. Main
/// thread; the tree owns the values.
///
/// The push buttons are set true by a client and false again when the server has answered. "Frequency" and
/// "Answer" are occurrences: asking for the frequency that is there already is a request as well.
class MpxOrvRequests : public IObserver {
  public:
    using Handler = std::function<void(ERequest)>;

    static constexpr double MinFrequency = 300000;      ///< Hz
    static constexpr double MaxFrequency = 3000000000;  ///< Hz

    /// Creates the values below \a nodePath + "/Request", showing \a frequency, and tells \a handler of every
    /// request.
    MpxOrvRequests(const QString& nodePath, double frequency, Handler handler);
    ~MpxOrvRequests() override;
    MpxOrvRequests(const MpxOrvRequests&) = delete;
    MpxOrvRequests& operator=(const MpxOrvRequests&) = delete;

    double GetFrequency() const;  ///< Hz
    /// 0 while none is chosen.
    std::chrono::milliseconds GetReportInterval() const;

    /// Says that what is asked for is granted: what is shown stays.
    void Grant(ERequest request);
    /// Shows again what was granted last, in place of what was asked for.
    void TakeBack(ERequest request);
    /// Shows that the device reports every \a interval.
    void ShowReportInterval(std::chrono::milliseconds interval);
    void Answer(const CodedText& text);

    /// The names of the values, and of the node that they are below.
    static QString NodeName() { return QStringLiteral("Request"); }
    static QString AnswerName() { return QStringLiteral("Answer"); }
    static QString AnswerCodeName() { return serverkeys::AnswerCode; }

    void Update(Observable* source, TChangeCode code) override;

  private:
    struct Fields;  ///< the table of the values

    void OnContentChanged(const Observable* source);

    QString m_basePath;
    Handler m_handler;
    values::ValueNumeric<double>* m_pFrequency = nullptr;
    values::Value<bool>* m_pBecomeMaster = nullptr;
    values::Value<bool>* m_pRestartJob = nullptr;
    values::Value<bool>* m_pBuiltInTest = nullptr;
    values::Value<bool>* m_pCalibrate = nullptr;
    values::ValueSelection* m_pReportInterval = nullptr;
    values::Value<QString>* m_pAnswer = nullptr;
    values::Value<QString>* m_pAnswerCode = nullptr;
    double m_grantedFrequency;
    int m_grantedIntervalIndex = values::ValueSelection::NoIndex;
};
