// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "poller.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace bench {

/// The least that polls: a thread per module that asks, looks, and waits for the next tick. Nobody is told of
/// an edge: it is known as soon as the thread that polls knows it.
class LibmodbusPoller : public Poller {
  public:
    ~LibmodbusPoller() override;

    bool Start(quint16 port) override;
    bool WaitUntilKnown(int module, bool isKeyed, Clock::time_point* when) override;
    QString Error() const override;

  private:
    struct Module {
        std::string address;
        int input = 0;
        std::thread thread;
        mutable std::mutex mutex;  ///< guards all that follows
        std::condition_variable seen;
        std::condition_variable ending;
        bool isEnding = false;
        bool isAnswering = false;
        bool isKeyed = false;
        Clock::time_point changed;
        std::string error;
    };

    static void Poll(Module& module, int port);
    static void See(Module& module, bool isKeyed);
    static void Fail(Module& module);

    std::vector<std::unique_ptr<Module>> m_modules;
};

}  // namespace bench
