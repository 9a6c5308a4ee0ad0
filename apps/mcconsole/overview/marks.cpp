// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/overview/marks.h>

#include <apps/common/problemtext.h>
#include <apps/mcconsole/session/judgement.h>
#include <apps/mcconsole/session/situation.h>
#include <apps/mcconsole/tune/tuning.h>
#include <apps/pages/agetext.h>

#include <platform/values/tree.h>
#include <platform/values/visit.h>
#include <platform/widgets/valuetext.h>

#include <QtCore/QCoreApplication>

#include <algorithm>

namespace {

using EMark = FrequencyMark::EKind;
using EFact = ServerFacts::EFact;

constexpr std::size_t MostMarks = 500;  // more are not told apart on any screen
constexpr int MaxMarkLabel = 24;        // characters
constexpr int MaxMarkDetail = 120;
constexpr double HighestShownHertz = 30e9;  // no receiver is tuned beyond

QString MarkText(const char* text) {
    return QCoreApplication::translate("Marks", text);
}

QString TextOf(const values::Node& node, const char* name) {
    const auto* const text =
        dynamic_cast<const values::Value<QString>*>(node.FindChild(QString::fromLatin1(name)));
    return text != nullptr ? valuetext::Shortened(text->GetValue(), MaxMarkDetail) : QString();
}

double NumberOf(const values::Node& node, const char* name) {
    const auto* const number =
        dynamic_cast<const values::ValueNumeric<double>*>(node.FindChild(QString::fromLatin1(name)));
    return number != nullptr ? number->GetValue() : 0;
}

/// "ADAM-6051 1, Tower keyed since 14:03:21" for each input at \a hz.
QStringList InputsAt(double hz, const values::Node& module) {
    QStringList lines;
    const auto* const inputs = dynamic_cast<const values::Node*>(module.FindChild(QStringLiteral("Inputs")));
    const values::TreeItem* item = inputs != nullptr ? inputs->GetFirstChild() : nullptr;
    for (; item != nullptr; item = item->GetNextSibling()) {
        if (!item->IsNode()) continue;
        const auto& input = static_cast<const values::Node&>(*item);
        if (NumberOf(input, "Frequency") != hz) continue;
        QString line =
            MarkText(QT_TRANSLATE_NOOP("Marks", "%1, %2")).arg(TextOf(module, "Name"), TextOf(input, "Name"));
        const QString since = agetext::Moment(TextOf(input, "KeyedSince"));
        if (!since.isEmpty())
            line += QLatin1Char(' ') + MarkText(QT_TRANSLATE_NOOP("Marks", "keyed since %1")).arg(since);
        const QString reason = problemtext::Translated(TextOf(module, "Reason"));
        if (!reason.isEmpty()) line += QStringLiteral(": ") + reason;
        lines += line;
    }
    return lines;
}

/// Which inputs of which modules the transmitters at \a hz are wired to, as far as the server tells.
QStringList WiredAt(double hz, const QString& basePath) {
    const QString path = basePath + QLatin1String("/Status/Suppression/Modules");
    const values::Node* const modules = values::Tree::Instance()->FindNode(path);
    QStringList lines;
    const values::TreeItem* item = modules != nullptr ? modules->GetFirstChild() : nullptr;
    for (; item != nullptr; item = item->GetNextSibling())
        if (item->IsNode()) lines += InputsAt(hz, static_cast<const values::Node&>(*item));
    return lines;
}

void AddTransmitters(std::vector<FrequencyMark>& marks, const Situation& situation, EFact fact, EMark kind) {
    const std::vector<double>* const list = situation.GetFacts().List(fact);
    if (list == nullptr) return;
    const bool isKeyed = kind == EMark::Keyed;
    const QString word = isKeyed ? MarkText(QT_TRANSLATE_NOOP("Marks", "keyed"))
                                 : MarkText(QT_TRANSLATE_NOOP("Marks", "not supervised"));
    for (const double hz : *list) {
        if (marks.size() >= MostMarks) return;
        QStringList detail{QStringLiteral("%1: %2").arg(judgement::Frequency(hz), word)};
        detail += WiredAt(hz, situation.GetBasePath());
        marks.push_back({kind, hz, word, detail.join(QLatin1Char('\n'))});
    }
}

FrequencyMark MarkOf(const FrequencyUsers::User& user, const Situation& situation) {
    const QString own = situation.GetMpxOrvPath().section(QLatin1Char('/'), -1);
    const bool isOwn = !own.isEmpty() && user.name == own;
    FrequencyMark mark;
    mark.kind = isOwn ? EMark::Own : user.isMaster ? EMark::Master : EMark::User;
    mark.hz = user.hz;
    mark.label = valuetext::Shortened(user.name, MaxMarkLabel);
    if (user.isMaster) mark.label += MarkText(QT_TRANSLATE_NOOP("Marks", " (master)"));
    mark.detail = QStringLiteral("%1: %2").arg(valuetext::Shortened(user.name, MaxMarkDetail),
                                               judgement::Frequency(user.hz));
    const QString since = agetext::Moment(user.since);
    if (!since.isEmpty())
        mark.detail += QLatin1Char(' ') + MarkText(QT_TRANSLATE_NOOP("Marks", "since %1")).arg(since);
    if (user.isMaster)
        mark.detail += QStringLiteral(", ") + MarkText(QT_TRANSLATE_NOOP("Marks", "job master"));
    if (isOwn) mark.detail += QStringLiteral(", ") + MarkText(QT_TRANSLATE_NOOP("Marks", "this console"));
    return mark;
}

void AddWanted(std::vector<FrequencyMark>& marks, const Tuning& tuning) {
    const Tuning::EState state = tuning.GetState();
    // Without an MpxORV too: the field holds it, whatever the server does.
    const bool isWanted = state != Tuning::EState::Tuned && state != Tuning::EState::NotTuned &&
                          state != Tuning::EState::OutOfRange;
    const FrequencyText wanted = tuning.GetWanted();
    if (!isWanted || !wanted.IsFrequency()) return;
    marks.push_back(
        {EMark::Wanted, wanted.GetHz(), MarkText(QT_TRANSLATE_NOOP("Marks", "wanted")),
         MarkText(QT_TRANSLATE_NOOP("Marks", "%1: wanted here")).arg(judgement::Frequency(wanted.GetHz()))});
}

}  // namespace

std::vector<FrequencyMark> marks::Make(const std::vector<FrequencyUsers::User>& users,
                                       const Situation& situation, const Tuning& tuning) {
    std::vector<FrequencyMark> all;
    for (const FrequencyUsers::User& user : users) {
        if (all.size() >= MostMarks) break;
        all.push_back(MarkOf(user, situation));
    }
    AddWanted(all, tuning);
    AddTransmitters(all, situation, EFact::UnsupervisedFrequencies, EMark::Unsupervised);
    AddTransmitters(all, situation, EFact::KeyedFrequencies, EMark::Keyed);
    const auto rank = [](const FrequencyMark& mark) {
        switch (mark.kind) {
            case EMark::Own:
                return 0;
            case EMark::Master:
                return 1;
            case EMark::Unsupervised:
            case EMark::Keyed:
                return 2;
            case EMark::Wanted:
                return 3;
            case EMark::User:
                break;
        }
        return 4;
    };
    std::stable_sort(all.begin(), all.end(), [&](const FrequencyMark& one, const FrequencyMark& other) {
        return std::make_pair(rank(one), one.hz) < std::make_pair(rank(other), other.hz);
    });
    return all;
}

std::vector<FrequencyBand> marks::MakeBands(const Situation& situation, const Tuning& tuning) {
    std::vector<FrequencyBand> bands;
    const ServerFacts& facts = situation.GetFacts();
    const double from = facts.Number(EFact::MasterRangeFrom).value_or(0);
    const double to = facts.Number(EFact::MasterRangeTo).value_or(0);
    const QString master =
        valuetext::Shortened(facts.Text(EFact::MasterName).value_or(QString()), MaxMarkDetail);
    if (to > from && !master.isEmpty())
        bands.push_back({FrequencyBand::EKind::Master, from, to,
                         MarkText(QT_TRANSLATE_NOOP("Marks", "range of the master")),
                         MarkText(QT_TRANSLATE_NOOP("Marks",
                                                    "%1 to %2: received by the job master, %3; who may read "
                                                    "from it needs no channel there"))
                             .arg(judgement::Frequency(from), judgement::Frequency(to), master)});
    if (!tuning.HasRange()) return bands;
    const QString label = MarkText(QT_TRANSLATE_NOOP("Marks", "outside the device's range"));
    const QString detail =
        MarkText(QT_TRANSLATE_NOOP("Marks", "The device can be tuned from %1 to %2"))
            .arg(judgement::Frequency(tuning.GetLowest()), judgement::Frequency(tuning.GetHighest()));
    bands.push_back({FrequencyBand::EKind::Outside, 0, tuning.GetLowest(), label, detail});
    bands.push_back({FrequencyBand::EKind::Outside, tuning.GetHighest(), HighestShownHertz, label, detail});
    return bands;
}
