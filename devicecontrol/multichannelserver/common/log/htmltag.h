// SPDX-License-Identifier: Apache-2.0
#pragma once

#include <QtCore/QString>

/// What the text area's reader of HTML makes of an element, by its name. All that is known of tags stands in
/// one table.
struct HtmlTag {
    /// What may stand where depends on it, and what is done with it.
    enum class EKind {
        Other,
        Cell,
        Row,
        RowGroup,
        Table,
        Caption,
        Paragraph,
        Preformatted,
        Item,
        Term,
        TermList,
        Body,
        Head,
        Sheet,
        Image,
        LineBreak
    };

    /// Lower case. Of a name that is not known: nothing particular.
    static const HtmlTag& Of(const QString& name);
    static bool MayStandIn(EKind kind, EKind parent);

    EKind kind = EKind::Other;
    bool isBlock = false;        ///< makes a paragraph of its own
    bool divides = false;        ///< the text before it and the text in it are different paragraphs
    bool isHidden = false;       ///< is not shown, with all that stands in it: none of which is a block then
    bool hasHiddenText = false;  ///< a text may stand in it, which is not shown
    bool isEmpty = false;        ///< nothing stands in it
    bool isOfFixedFont = false;
};
