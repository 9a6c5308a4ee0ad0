// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <apps/pages/page.h>

#include <platform/values/pathbinding.h>

#include <QtCore/QTimer>
#include <QtCore/QVariant>

#include <memory>
#include <vector>

class ChangeMark;
class MCSConfigDisplay;
class QLabel;
class QPushButton;
class VCPushButton;

/// The server's configuration: what of it is not saved, saving it, and going back to what was saved. A server
/// that does not tell what was saved can be told to save at any time.
class ConfigPage : public Page, private PathBinding::IListener {
    Q_OBJECT

  public:
    explicit ConfigPage(QWidget* parent = nullptr);
    ~ConfigPage() override;
    void Bind(const QString& basePath, EMCSControlTreeSegments segments) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    struct Field {
        QString caption;
        QWidget* widget;
        ChangeMark* mark;
        std::unique_ptr<PathBinding> current;
        std::unique_ptr<PathBinding> saved;

        bool IsKnown() const;
        bool IsChanged() const;
        /// What is there, or is typed and has not left the field yet.
        QVariant GetContent() const;
    };

    void AddFields();
    QWidget* BuildButtons();
    void OnBindingChanged(PathBinding& binding, TChangeCode code) override;
    void ShowChanges();
    QString SavedText() const;
    void Revert();
    void EndTyping();
    void DropTyping();

    MCSConfigDisplay* m_display;
    QLabel* m_changes;
    QLabel* m_when;
    VCPushButton* m_save;
    QPushButton* m_revert;
    std::vector<Field> m_fields;
    PathBinding m_since;
    PathBinding m_by;
    QTimer m_look;  ///< for what a key has done to a field
    bool m_isBinding = false;
};
