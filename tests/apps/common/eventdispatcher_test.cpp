// SPDX-License-Identifier: Apache-2.0
#include <apps/common/eventdispatcher.h>

#include <QtCore/QAbstractEventDispatcher>
#include <QtCore/QByteArray>
#include <QtCore/QThread>

#include <gtest/gtest.h>

namespace {

QByteArray DispatcherOfANewThread() {
    QByteArray name;
    QThread* const thread =
        QThread::create([&name] { name = QAbstractEventDispatcher::instance()->metaObject()->className(); });
    thread->start();
    thread->wait();
    delete thread;
    return name;
}

class EventDispatcherTest : public testing::Test {
  protected:
    EventDispatcherTest() { qunsetenv("QT_NO_GLIB"); }
    ~EventDispatcherTest() override { qputenv("QT_NO_GLIB", m_before); }

  private:
    QByteArray m_before = qgetenv("QT_NO_GLIB");
};

TEST_F(EventDispatcherTest, IsQtsOwnWhereThatIsAskedFor) {
    UseQtEventDispatcher();
    EXPECT_FALSE(DispatcherOfANewThread().toLower().contains("glib"));
}

}  // namespace
