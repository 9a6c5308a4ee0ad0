// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <platform/values/observation.h>
#include <platform/values/pathbinding.h>
#include <platform/values/value.h>

#include <QtCore/QString>

/// The server's answers to the requests of an MpxORV in the language of the application: a value of this
/// process, for a log display, which shows what a value holds as it comes. Needs the tree; main thread.
class ShownAnswers : private PathBinding::IListener, private IObserver {
  public:
    ShownAnswers();
    ~ShownAnswers() override;
    ShownAnswers(const ShownAnswers&) = delete;
    ShownAnswers& operator=(const ShownAnswers&) = delete;

    /// Those of the MpxORV whose node is at \a path; empty: of none.
    void Bind(const QString& path);
    /// Where the value is.
    QString GetPath() const;

  private:
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void Update(Observable* source, TChangeCode code) override;

    PathBinding m_code;
    PathBinding m_answer;
    Observation<values::Value<QString>> m_shown;
};
