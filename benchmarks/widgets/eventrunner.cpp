// SPDX-License-Identifier: Apache-2.0
#include "eventrunner.h"

#include "stopwatch.h"

#include <QtCore/QEventLoop>
#include <QtCore/QTimer>
#include <QtWidgets/QApplication>

#include <algorithm>

namespace bench {

double RunAtRate(double seconds, int perSecond, const std::function<void()>& act) {
    const Stopwatch watch;
    QEventLoop loop;
    QTimer tick;
    long done = 0;
    tick.setTimerType(Qt::PreciseTimer);
    QObject::connect(&tick, &QTimer::timeout, &loop, [&] {
        const double elapsed = watch.Seconds();
        for (const auto due = static_cast<long>(elapsed * perSecond); done < due; ++done)
            act();
        if (elapsed >= seconds) loop.quit();
    });
    tick.start(std::max(5, 1000 / perSecond));
    loop.exec();
    return static_cast<double>(done) / watch.Seconds();
}

void DrawAll() {
    for (int turn = 0; turn < 3; ++turn)
        QApplication::processEvents();
}

}  // namespace bench
