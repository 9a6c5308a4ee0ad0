// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/mcserver/suppression/suppressionduties.h>
#include <apps/pages/page.h>

#include <memory>

class GTSDisplay;
class InputsView;
class SuppressionPlant;
class SuppressionUndo;
class SuppressionView;

/// The ground transmitter suppression: while this page lives, its modules are polled and their frequencies
/// kept from the MpxORVs, whether the page is shown or not. GUI thread.
class SuppressionPage : public Page {
    Q_OBJECT

  public:
    /// \a recovery has begun, and outlives the page, as the others do.
    SuppressionPage(const SuppressionRecovery& recovery, JobControl& jobs, ServerLog& log, IClock& clock,
                    QWidget* parent = nullptr);
    ~SuppressionPage() override;

    /// For the part that shows what consoles see too.
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;

    SuppressionPlant& GetPlant() const;
    const SuppressionRecorder& GetRecorder() const { return m_duties->GetRecorder(); }

  private:
    GTSDisplay* m_display;
    InputsView* m_inputs = nullptr;
    SuppressionView* m_state = nullptr;
    std::unique_ptr<SuppressionUndo> m_undo;
    std::unique_ptr<SuppressionDuties> m_duties;  ///< go before the display, which brought the blanking
};
