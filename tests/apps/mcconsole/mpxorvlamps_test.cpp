// SPDX-License-Identifier: Apache-2.0
#include <apps/pages/colours.h>
#include <apps/pages/mpxorvs/mpxorvlamps.h>

#include <gtest/gtest.h>

#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPalette>
#include <QtGui/QPixmap>
#include <QtWidgets/QApplication>

#include <algorithm>
#include <cmath>

namespace {

using EState = MpxOrvContent::EState;
constexpr EState States[] = {EState::Idle, EState::AtWork, EState::Tuned, EState::Watching, EState::Master};

QImage Image(EState state, QIcon::Mode mode = QIcon::Normal) {
    const QSize size(mpxorvlamps::Size, mpxorvlamps::Size);
    return mpxorvlamps::Get(state).pixmap(size, mode).toImage().convertToFormat(QImage::Format_ARGB32);
}

double Luminance(const QColor& colour) {
    const auto linear = [](double part) {
        return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

double Contrast(const QColor& one, const QColor& other) {
    const double a = Luminance(one);
    const double b = Luminance(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

/// How many pixels of the lamp, as a list with \a background draws it, stand out from that.
int CountSeen(EState state, QIcon::Mode mode, const QColor& background) {
    QImage drawn(mpxorvlamps::Size, mpxorvlamps::Size, QImage::Format_ARGB32);
    drawn.fill(background);
    QPainter(&drawn).drawImage(0, 0, Image(state, mode));
    int seen = 0;
    for (int y = 0; y < drawn.height(); ++y)
        for (int x = 0; x < drawn.width(); ++x)
            seen += Contrast(drawn.pixelColor(x, y), background) >= 2.5 ? 1 : 0;
    return seen;
}

TEST(MpxOrvLamps, DifferInShapeAndNotInColourAlone) {
    for (const EState one : States)
        for (const EState other : States) {
            if (one == other) continue;
            const QImage a = Image(one);
            const QImage b = Image(other);
            int different = 0;
            for (int y = 0; y < a.height(); ++y)
                for (int x = 0; x < a.width(); ++x)
                    different += std::abs(qAlpha(a.pixel(x, y)) - qAlpha(b.pixel(x, y))) > 128 ? 1 : 0;
            EXPECT_GE(different, 12) << int(one) << " and " << int(other);
        }
}

class MpxOrvLampsInColours : public testing::TestWithParam<bool> {
  protected:
    MpxOrvLampsInColours() { colours::Apply(GetParam()); }
    ~MpxOrvLampsInColours() override { colours::Apply(false); }
};

TEST_P(MpxOrvLampsInColours, AreSeen) {
    const QPalette palette = QApplication::palette();
    for (const EState state : States) {
        EXPECT_GE(CountSeen(state, QIcon::Normal, palette.color(QPalette::Base)), 25) << int(state);
        EXPECT_GE(CountSeen(state, QIcon::Normal, palette.color(QPalette::AlternateBase)), 25) << int(state);
    }
}

TEST_P(MpxOrvLampsInColours, AreSeenOnASelectedRow) {
    const QColor selected = QApplication::palette().color(QPalette::Highlight);
    for (const EState state : States) {
        EXPECT_GE(CountSeen(state, QIcon::Selected, selected), 25) << int(state);
        // On its plate the shape stands out as well.
        const QImage lamp = Image(state, QIcon::Selected);
        int shape = 0;
        for (int y = 0; y < lamp.height(); ++y)
            for (int x = 0; x < lamp.width(); ++x)
                shape += Contrast(lamp.pixelColor(x, y), Qt::white) >= 2.5 && qAlpha(lamp.pixel(x, y)) > 200;
        EXPECT_GE(shape, 20) << int(state);
    }
}

INSTANTIATE_TEST_SUITE_P(Palette, MpxOrvLampsInColours, testing::Bool(),
                         [](const auto& dark) { return dark.param ? "Dark" : "Light"; });

}  // namespace
