// SPDX-License-Identifier: Apache-2.0
#include "libmodbuspoller.h"

#include "plant.h"

#include <modbus.h>

#include <array>
#include <cerrno>
#include <cstdint>
#include <functional>

namespace bench {

LibmodbusPoller::~LibmodbusPoller() {
    for (const auto& module : m_modules) {
        const std::lock_guard<std::mutex> lock(module->mutex);
        module->isEnding = true;
        module->ending.notify_all();
    }
    for (const auto& module : m_modules)
        module->thread.join();
}

bool LibmodbusPoller::Start(quint16 port) {
    for (int i = 0; i < plant::Modules; ++i) {
        auto module = std::make_unique<Module>();
        module->address = plant::AddressOf(i).toStdString();
        module->input = plant::InputOf(i);
        module->thread = std::thread(Poll, std::ref(*module), int{port});
        m_modules.push_back(std::move(module));
    }
    for (const auto& module : m_modules) {
        std::unique_lock<std::mutex> lock(module->mutex);
        if (!module->seen.wait_for(lock, std::chrono::milliseconds(plant::Patience),
                                   [&] { return module->isAnswering; }))
            return false;
    }
    return true;
}

void LibmodbusPoller::Poll(Module& module, int port) {
    const std::unique_ptr<modbus_t, void (*)(modbus_t*)> context(modbus_new_tcp(module.address.c_str(), port),
                                                                 modbus_free);
    if (!context || modbus_connect(context.get()) != 0) return Fail(module);
    Clock::time_point tick = Clock::now();
    bool isEnding = false;
    while (!isEnding) {
        std::array<std::uint8_t, plant::Inputs> bits = {};
        if (modbus_read_input_bits(context.get(), 0, plant::Inputs, bits.data()) != plant::Inputs) {
            Fail(module);
            break;
        }
        See(module, bits[static_cast<std::size_t>(module.input)] == 0);
        tick += std::chrono::milliseconds(plant::PollInterval);
        std::unique_lock<std::mutex> lock(module.mutex);
        isEnding = module.ending.wait_until(lock, tick, [&] { return module.isEnding; });
    }
    modbus_close(context.get());
}

void LibmodbusPoller::See(Module& module, bool isKeyed) {
    const std::lock_guard<std::mutex> lock(module.mutex);
    if (module.isAnswering && module.isKeyed == isKeyed) return;
    module.changed = Clock::now();
    module.isAnswering = true;
    module.isKeyed = isKeyed;
    module.seen.notify_all();
}

void LibmodbusPoller::Fail(Module& module) {
    const std::string text = modbus_strerror(errno);
    const std::lock_guard<std::mutex> lock(module.mutex);
    module.error = module.address + ": " + text;
}

bool LibmodbusPoller::WaitUntilKnown(int module, bool isKeyed, Clock::time_point* when) {
    Module& asked = *m_modules[static_cast<std::size_t>(module)];
    std::unique_lock<std::mutex> lock(asked.mutex);
    const bool isKnown = asked.seen.wait_for(lock, std::chrono::milliseconds(plant::Patience),
                                             [&] { return asked.isKeyed == isKeyed; });
    *when = asked.changed;
    return isKnown;
}

QString LibmodbusPoller::Error() const {
    for (const auto& module : m_modules) {
        const std::lock_guard<std::mutex> lock(module->mutex);
        if (!module->error.empty()) return QString::fromStdString(module->error);
    }
    return QString();
}

}  // namespace bench
