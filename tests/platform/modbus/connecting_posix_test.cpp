// SPDX-License-Identifier: Apache-2.0
#include <platform/modbus/modbussystem.h>
#include <tests/platform/modbus/fulllistener.h>
#include <tests/platform/modbus/interfacefixture.h>

#include <dirent.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <thread>

namespace {

using modbussystem::EError;
using testing::ElementsAre;
using testing::IsEmpty;

using Action = FaultyPeer::Action;

class ModbusTcpInterfaceConnecting : public InterfaceTest {};

TEST_F(ModbusTcpInterfaceConnecting, ATimeoutSaysSoAndNotThatItIsInProgress) {
    const FullListener listener;
    settings.responseTimeout = std::chrono::milliseconds(100);
    Connect(listener.Port());
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_THAT(Read(), ElementsAre(Error(EError::TimedOut)));
    EXPECT_GE(elapsed.elapsed(), 99);
    EXPECT_LT(elapsed.elapsed(), 2000);
}

TEST_F(ModbusTcpInterfaceConnecting, AbortEndsItAtOnce) {
    const FullListener listener;
    settings.responseTimeout = std::chrono::milliseconds(60000);
    // Each time the other thread may come a little earlier or later. It gives nothing away meanwhile: where
    // others compute, it would have the processor back only after a turn of each.
    for (int i = 0; i < 50; ++i) {
        Connect(listener.Port());
        QElapsedTimer elapsed;
        elapsed.start();
        std::thread other([this, i] {
            const std::chrono::microseconds wait(i * 10);
            const auto start = std::chrono::steady_clock::now();
            while (std::chrono::steady_clock::now() - start < wait) {
            }
            interface->Abort();
        });
        EXPECT_THAT(Read(), IsEmpty());
        other.join();
        EXPECT_LT(elapsed.elapsed(), 30000);  // far from the time-out, also on a busy machine
    }
}

/// Raises the number of descriptors as far as it goes, and takes all below one more than select() knows.
class LowDescriptorsTaken {
  public:
    LowDescriptorsTaken() {
        getrlimit(RLIMIT_NOFILE, &m_before);
        rlimit all = m_before;
        all.rlim_cur = all.rlim_max;
        setrlimit(RLIMIT_NOFILE, &all);
        int last = 0;
        while (last < FD_SETSIZE - 1 && last != -1)
            m_taken.push_back(last = ::open("/dev/null", O_RDONLY | O_CLOEXEC));
    }
    ~LowDescriptorsTaken() {
        for (const int descriptor : m_taken)
            ::close(descriptor);
        setrlimit(RLIMIT_NOFILE, &m_before);
    }
    LowDescriptorsTaken(const LowDescriptorsTaken&) = delete;
    LowDescriptorsTaken& operator=(const LowDescriptorsTaken&) = delete;

  private:
    rlimit m_before{};
    std::vector<int> m_taken;
};

TEST_F(ModbusTcpInterfaceConnecting, BeyondTheDescriptorsOfSelectModulesAreReadToo) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    const LowDescriptorsTaken taken;
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(1)));
}

TEST_F(ModbusTcpInterfaceConnecting, NoDescriptorsLeftAreAnErrorUntilThereIsOne) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    const int lowestFree = ::dup(STDOUT_FILENO);
    ::close(lowestFree);
    rlimit before{};
    getrlimit(RLIMIT_NOFILE, &before);
    rlimit none = before;
    none.rlim_cur = static_cast<rlim_t>(lowestFree);
    setrlimit(RLIMIT_NOFILE, &none);
    EXPECT_THAT(Read(), ElementsAre(Error(unsigned{EMFILE})));
    setrlimit(RLIMIT_NOFILE, &before);
    LetDelayPass();
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(1)));
}

/// Whether some descriptor of this process would be open in programs that it starts: which keep it from then
/// on.
bool IsAnySocketInherited() {
    for (int descriptor = STDERR_FILENO + 1; descriptor < FD_SETSIZE; ++descriptor) {
        const int flags = ::fcntl(descriptor, F_GETFD);
        sockaddr_storage address{};
        socklen_t size = sizeof address;
        const bool isSocket = ::getsockname(descriptor, reinterpret_cast<sockaddr*>(&address), &size) == 0;
        if (flags != -1 && isSocket && (flags & FD_CLOEXEC) == 0) return true;
    }
    return false;
}

TEST_F(ModbusTcpInterfaceConnecting, AConnectionIsNothingThatOtherProgramsInherit) {
    Listen([](const QByteArray& question, int) -> Action { return {FaultyPeer::Answer(question, 1)}; });
    EXPECT_THAT(Read(), ElementsAre(Opened(), Bits(1)));
    EXPECT_FALSE(IsAnySocketInherited());
}

int OpenDescriptors() {
    int count = 0;
    DIR* const directory = ::opendir("/dev/fd");
    while (::readdir(directory) != nullptr)
        ++count;
    ::closedir(directory);
    return count;
}

TEST_F(ModbusTcpInterfaceConnecting, ErrorsLeaveNoDescriptorsBehind) {
    const quint16 port = FaultyPeer([](const QByteArray&, int) -> Action { return {}; }).Port();
    const int before = OpenDescriptors();
    Connect(port);
    for (int i = 0; i < 50; ++i) {
        LetDelayPass();
        EXPECT_EQ(Read().size(), 1u);
    }
    interface.reset();
    EXPECT_EQ(OpenDescriptors(), before);
}

}  // namespace
