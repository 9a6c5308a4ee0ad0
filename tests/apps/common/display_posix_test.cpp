// SPDX-License-Identifier: Apache-2.0
// Whether a window can be shown on the display that the environment names, which may be there or not.
#include <apps/common/display.h>

#include <gtest/gtest.h>

#include <QtCore/QByteArray>
#include <QtCore/QtGlobal>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>
#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <thread>

namespace {

constexpr const char* Variables[] = {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"};

/// Gives the environment back as it was.
class ADisplay : public testing::Test {
  protected:
    ADisplay() {
        for (const char* const variable : Variables) {
            if (qEnvironmentVariableIsSet(variable)) m_before[variable] = qgetenv(variable);
            qunsetenv(variable);
        }
    }
    ~ADisplay() override {
        for (const char* const variable : Variables)
            m_before.count(variable) != 0 ? qputenv(variable, m_before[variable]) : qunsetenv(variable);
    }

  private:
    std::map<const char*, QByteArray> m_before;
};

struct Environment {
    const char* name;
    const char* display;
    const char* wayland;
    const char* platform;
    const char* problem;
};

class ADisplayOf : public ADisplay, public testing::WithParamInterface<Environment> {};

TEST_P(ADisplayOf, IsJudgedBeforeTheToolkitEndsTheProcess) {
    const char* const contents[] = {GetParam().display, GetParam().wayland, GetParam().platform};
    for (std::size_t i = 0; i < std::size(contents); ++i)
        if (contents[i] != nullptr) qputenv(Variables[i], contents[i]);
    EXPECT_EQ(GetDisplayProblem().toStdString(), GetParam().problem);
}

INSTANTIATE_TEST_SUITE_P(
    All, ADisplayOf,
    testing::Values(
        Environment{"NobodyIsThere", ":99999", nullptr, nullptr, "the display \":99999\" cannot be reached"},
        Environment{"NoDisplayAtAll", "x", nullptr, nullptr, "the display \"x\" cannot be reached"},
        Environment{"NobodyIsThereForAChosenPlugin", ":99999", nullptr, "xcb",
                    "the display \":99999\" cannot be reached"},
        Environment{"APluginWithoutADisplay", ":99999", nullptr, "offscreen", ""},
        Environment{"PluginsOfWhichOneMayDo", ":99999", nullptr, "xcb;offscreen", ""},
        Environment{"Wayland", ":99999", "wayland-0", nullptr, ""}),
    [](const auto& row) { return std::string(row.param.name); });

#ifdef Q_OS_LINUX
/// Answers one client as a display does, and waits until it has gone.
class OneClientDisplay {
  public:
    OneClientDisplay() : m_socket(::socket(AF_UNIX, SOCK_STREAM, 0)) {
        // In the name space of Linux without files, where clients look first.
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        const QByteArray path = "/tmp/.X11-unix/X" + QByteArray::number(Number());
        std::memcpy(address.sun_path + 1, path.constData(), static_cast<std::size_t>(path.size()));
        const auto size = static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + 1 +
                                                 static_cast<std::size_t>(path.size()));
        m_isListening =
            ::bind(m_socket, reinterpret_cast<sockaddr*>(&address), size) == 0 && ::listen(m_socket, 1) == 0;
        m_thread = std::thread([this] { Answer(); });
    }
    ~OneClientDisplay() {
        ::shutdown(m_socket, SHUT_RDWR);
        m_thread.join();
        ::close(m_socket);
    }

    bool IsListening() const { return m_isListening; }
    /// Nobody else's.
    static int Number() { return static_cast<int>(::getpid()) + 10000; }

  private:
    void Answer() const {
        const int client = ::accept(m_socket, nullptr, nullptr);
        if (client < 0) return;
        std::array<char, 1024> bytes = {};
        if (::recv(client, bytes.data(), bytes.size(), 0) > 0) {
            // "Success" of version 11, with 32 bytes that say what there is: numbers for things, and no
            // screen.
            std::array<unsigned char, 40> success = {1, 0, 11, 0, 0, 0, 8, 0};
            success[12] = 1;     // the first number
            success[18] = 0x1F;  // which of its bits are free
            ::send(client, success.data(), success.size(), MSG_NOSIGNAL);
            while (::recv(client, bytes.data(), bytes.size(), 0) > 0) {
            }
        }
        ::close(client);
    }

    int m_socket;
    bool m_isListening = false;
    std::thread m_thread;
};

TEST_F(ADisplay, IsFineWhereItAnswers) {
    const OneClientDisplay display;
    ASSERT_TRUE(display.IsListening());
    qputenv("DISPLAY", ":" + QByteArray::number(OneClientDisplay::Number()));
    EXPECT_EQ(GetDisplayProblem().toStdString(), "");
}
#endif

}  // namespace
