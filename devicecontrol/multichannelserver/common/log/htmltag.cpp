// SPDX-License-Identifier: Apache-2.0
#include <devicecontrol/multichannelserver/common/log/htmltag.h>

#include <QtCore/QHash>

namespace {

namespace html {

using EKind = HtmlTag::EKind;

constexpr unsigned Block = 1;  // which divides texts too
constexpr unsigned Divides = 2;
constexpr unsigned Hidden = 4;
constexpr unsigned HiddenText = 8;
constexpr unsigned Empty = 16;
constexpr unsigned FixedFont = 32;

struct Row {
    const char* name;
    EKind kind;
    unsigned traits;
};

constexpr Row Rows[] = {
    {"blockquote", EKind::Other, Block},
    {"body", EKind::Body, Block},
    {"br", EKind::LineBreak, Empty},
    {"caption", EKind::Caption, Block},
    {"center", EKind::Other, Block},
    {"code", EKind::Other, FixedFont},
    {"dd", EKind::Term, Block},
    {"div", EKind::Other, Block},
    {"dl", EKind::TermList, Block},
    {"dt", EKind::Term, Block},
    {"h1", EKind::Other, Block},
    {"h2", EKind::Other, Block},
    {"h3", EKind::Other, Block},
    {"h4", EKind::Other, Block},
    {"h5", EKind::Other, Block},
    {"h6", EKind::Other, Block},
    {"head", EKind::Head, Hidden | HiddenText},
    {"hr", EKind::Other, Block | Empty},
    {"img", EKind::Image, Empty},
    {"kbd", EKind::Other, FixedFont},
    {"li", EKind::Item, Block},
    {"link", EKind::Other, Hidden},
    {"meta", EKind::Other, Hidden | Empty},
    {"ol", EKind::Other, Block},
    {"p", EKind::Paragraph, Block},
    {"pre", EKind::Preformatted, Block | FixedFont},
    {"qt", EKind::Body, Block},
    {"samp", EKind::Other, FixedFont},
    {"script", EKind::Other, Hidden | HiddenText},
    {"style", EKind::Sheet, Hidden | HiddenText},
    {"table", EKind::Table, Divides},
    {"tbody", EKind::RowGroup, 0},
    {"td", EKind::Cell, Block},
    {"tfoot", EKind::RowGroup, 0},
    {"th", EKind::Cell, Block},
    {"thead", EKind::RowGroup, 0},
    {"title", EKind::Other, Hidden | HiddenText},
    {"tr", EKind::Row, Divides},
    {"tt", EKind::Other, FixedFont},
    {"ul", EKind::Other, Block},
};

QHash<QString, HtmlTag> MakeTags() {
    QHash<QString, HtmlTag> tags;
    for (const Row& row : Rows) {
        HtmlTag& tag = tags[QString::fromLatin1(row.name)];
        tag.kind = row.kind;
        tag.isBlock = (row.traits & Block) != 0;
        tag.divides = (row.traits & (Block | Divides)) != 0;
        tag.isHidden = (row.traits & Hidden) != 0;
        tag.hasHiddenText = (row.traits & HiddenText) != 0;
        tag.isEmpty = (row.traits & Empty) != 0;
        tag.isOfFixedFont = (row.traits & FixedFont) != 0;
    }
    return tags;
}

}  // namespace html

}  // namespace

const HtmlTag& HtmlTag::Of(const QString& name) {
    static const auto& tags = *new QHash<QString, HtmlTag>(html::MakeTags());
    static const HtmlTag other;
    const auto found = tags.constFind(name);
    return found != tags.cend() ? *found : other;
}

bool HtmlTag::MayStandIn(EKind kind, EKind parent) {
    switch (kind) {
        case EKind::Cell:
            return parent == EKind::Row;
        case EKind::Row:
            return parent == EKind::Table || parent == EKind::RowGroup;
        case EKind::RowGroup:
        case EKind::Caption:
            return parent == EKind::Table;
        case EKind::Term:
            return parent == EKind::TermList;
        case EKind::Body:
            return parent != EKind::Head;
        default:
            return true;
    }
}
