// SPDX-License-Identifier: Apache-2.0
#include <QtCore/QCoreApplication>
#include <QtNetwork/QTcpServer>

#include <modbus.h>

#include <cstdio>
#include <memory>

namespace {

using Mapping = std::unique_ptr<modbus_mapping_t, decltype(&modbus_mapping_free)>;

/// Gives libmodbus the connections one after the other.
class Server final : public QTcpServer {
  public:
    explicit Server(modbus_mapping_t& mapping) : m_mapping(mapping) {}

  protected:
    void incomingConnection(qintptr descriptor) override {
        modbus_t* const context = modbus_new_tcp("127.0.0.1", MODBUS_TCP_DEFAULT_PORT);
        modbus_set_socket(context, static_cast<int>(descriptor));
        quint8 question[MODBUS_TCP_MAX_ADU_LENGTH];
        for (int size = 0; size != -1;) {
            size = modbus_receive(context, question);
            if (size > 0) modbus_reply(context, question, size, &m_mapping);
        }
        modbus_close(context);
        modbus_free(context);
    }

  private:
    modbus_mapping_t& m_mapping;
};

}  // namespace

/// libmodbus's own server: coils are ON, OFF, ..., discrete inputs the arguments. Prints its port.
int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const Mapping mapping(modbus_mapping_new(16, argc - 1, 0, 0), &modbus_mapping_free);
    for (int i = 0; i < 16; ++i)
        mapping->tab_bits[i] = i % 2 == 0;
    for (int i = 1; i < argc; ++i)
        mapping->tab_input_bits[i - 1] = argv[i][0] == '1';
    Server server(*mapping);
    if (!server.listen(QHostAddress::LocalHost)) return 1;
    std::printf("%d\n", server.serverPort());
    std::fflush(stdout);
    return QCoreApplication::exec();
}
