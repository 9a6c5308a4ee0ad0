// SPDX-License-Identifier: Apache-2.0
#include <apps/dimodule/moduleoptions.h>

#include <apps/common/commandline.h>

#include <QtNetwork/QHostAddress>

#include <limits>

namespace dimodule {

namespace {

// In the order of the help.
constexpr CommandLine::Option Options[] = {
    {"listen", "ADDRESS[:PORT]",
     "Where a module is, an address of this machine only (127.x.y.z); port 0 is any free one. May be given "
     "several times. 127.0.0.1:1502 unless given."},
    {"modules", "N", "So many modules at each of these, at one address after the other."},
    {"inputs", "N", "Inputs of each module, 1 to 32. 12 unless given."},
    {"start", "N", "Modbus address of the first input. 0 unless given."},
    {"unit", "N", "The only Modbus unit that answers. Every unit unless given."},
    {"pattern", "NAME[:MS]", "Key inputs by itself, every MS (500): walk, blink or random."},
    {"script", "FILE", "Carry out the commands in FILE, one line each."},
    {"fault", "FAULT", "Start with this fault, such as 'delay 300 x5'."},
    {"seed", "N", "What random faults and patterns start from. 1 unless given."},
};

QString Text(const char* text) {
    return QString::fromUtf8(text);
}

QString HelpEnd() {
    return Text(
               "\nCommands, on the standard input or in the script, where M is a module from 1, and all "
               "modules without it:\n"
               "  key [M/]INPUT...      key transmitters: the inputs (from 0, or all) read 0\n"
               "  release [M/]INPUT...  the inputs read 1\n"
               "  states [M/]NUMBER     all inputs at once, bit i for input i\n"
               "  fault [M/]FAULT       do wrong from now on\n"
               "  show                  tell about the modules\n"
               "  wait MS, repeat       in a script: wait, start again\n"
               "  quit\n"
               "\nFaults; xN after one ends it after N questions:\n") +
           Fault::Help();
}

void AddModules(CommandLine& line, const QString& place, int count, ModuleOptions& options) {
    ListenAddress listen{QString(), ModuleOptions::DefaultPort};
    QString error;
    if (!listen.Parse(place, &error)) return line.Refuse("listen", error);
    const QHostAddress first(listen.address);
    const bool isIPv4 = first.protocol() == QAbstractSocket::IPv4Protocol;
    for (int i = 0; i < count; ++i) {
        const QHostAddress address =
            isIPv4 ? QHostAddress(first.toIPv4Address() + static_cast<quint32>(i)) : first;
        // Whoever can reach a module can ask it, and no such thing is to be open to a network by mistake.
        if (!isIPv4 || !address.isLoopback())
            return line.Refuse("listen",
                               QStringLiteral("'%1' is not within 127.0.0.0/8").arg(address.toString()));
        options.listen.push_back({address.toString(), listen.port});
    }
    if (options.listen.size() > std::size_t(ModuleOptions::MaxModules))
        line.Refuse("modules",
                    QStringLiteral("there are more than %1 modules").arg(ModuleOptions::MaxModules));
}

/// One option after the other, up to the first that is wrong.
void TakeOptions(CommandLine& line, ModuleOptions& options) {
    Inputs& inputs = options.inputs;
    int modules = 1;
    int seed = 1;
    line.TakeNumber("modules", 1, ModuleOptions::MaxModules, &modules);
    line.TakeNumber("inputs", 1, Inputs::MaxCount, &inputs.count);
    line.TakeNumber("start", 0, 65535 - inputs.count + 1, &inputs.start);
    line.TakeNumber("unit", 0, 255, &inputs.unit);
    line.TakeNumber("seed", 0, std::numeric_limits<int>::max(), &seed);
    inputs.states = inputs.All();
    options.seed = static_cast<unsigned>(seed);
    line.TakeText("script", &options.scriptFile);
    if (line.IsSet("pattern"))
        line.Refuse("pattern", Pattern::Parse(line.GetValue("pattern"), &options.pattern));
    if (line.IsSet("fault"))
        line.Refuse("fault", Fault::Parse(line.GetValue("fault").simplified().split(QLatin1Char(' ')),
                                          &options.fault));
    QStringList places = line.GetValues("listen");
    if (places.isEmpty()) places += Text("127.0.0.1");
    for (const QString& place : places)
        AddModules(line, place, modules, options);
}

}  // namespace

ModuleOptions ModuleOptions::Parse(const QStringList& arguments) {
    ModuleOptions options;
    CommandLine line("dimodule",
                     "Simulates modules of digital inputs on Modbus/TCP. An input reads 1, or 0 while its "
                     "transmitter is keyed.",
                     Options, &options);
    line.SetHelpEnd(HelpEnd());
    if (line.Parse(arguments)) TakeOptions(line, options);
    return options;
}

}  // namespace dimodule
