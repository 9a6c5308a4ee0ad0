// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>
#include <QtWidgets/QDialog>

#include <vector>

/// The keys of a window, and what they do. GUI thread.
class KeysDialog : public QDialog {
    Q_OBJECT

  public:
    struct Row {
        QString keys;
        QString what;
    };

    KeysDialog(const std::vector<Row>& rows, QWidget* parent);

    /// Those of the menus of \a window, those that every window has, and \a further ones that work in parts
    /// of it.
    static std::vector<Row> RowsOf(const QWidget& window, const std::vector<Row>& further = {});
};
