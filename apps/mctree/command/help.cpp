// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/help.h>

namespace mctree {

namespace {

const char* const HelpOfAll = R"(usage: mctree [options] COMMAND ...

Reads and writes the tree of values of a server.

commands
  ls [-r] [PATH...]             what is below each PATH ("/" unless given)
  get [--wait COND] PATH...     the content, raw and without its unit; of several a line each
  set PATH... VALUE             sets the content and waits for the server's answer
  set -f FILE                   the same for each line of a file ("-": the standard input)
  watch PATH...                 what there is, then every change as a line, until interrupted
  hold PATH...                  uses an MpxORV and keeps it, until interrupted
  events [--follow] [--count N] what happened at the server, the last N (20)
  info                          the server, the connection and how many values there are
  stations nats://HOST          who offers a server at NATS
  help [COMMAND]                this text, or all about a command

paths
  Names separated by "/". "*", "?" and "[a-z]" stand for parts of a name as in a shell (which must not
  see them: quote the path), "**" for any number of names; a "\" takes their meaning from them.

options for every command
  --connect HOST[:PORT]   the server (127.0.0.1:7450), or nats://HOST/STATION: one that NATS leads to
  -s, --server NAME       a server by its name in the file of profiles; the one called "default" there
                          if neither is given
  --profiles FILE         that file; also MCTREE_PROFILES in the environment
  --tls                   encrypted; also asked for by mcss:// in front of HOST, and by these:
  --ca FILE               whom the server's certificate must come from (PEM)
  --cert FILE --key FILE  our own certificate, and its key (PEM)
  --user NAME             whose token it is
  --token-file FILE       the credential, in the first line of a file; also as --token TOKEN, which
                          lists of processes show, or MCS_TOKEN in the environment
  --timeout MS            how long to wait for the server, in milliseconds (5000; watch, hold and
                          get --wait wait for ever unless it is given)
  --no-retry              a connection that cannot be made, or is lost, ends the command at once
  --json                  JSON: an array (ls), or an object a line
  --literal               paths are as they stand, with no "*" in them
  -h, --help              this text, or all about a command
  -V, --version           the version
  --                      no option follows, for values that start with "-"

exit codes
  0 done   1 denied, refused or not found   2 wrong usage   3 no connection   4 waited in vain
  Where several things are asked for and some fail, the others are done; the greatest code counts.
)";

const char* const HelpOfList = R"(usage: mctree ls [-r] [PATH...]

Lists what is below each PATH, "/" unless given. A value, and what a pattern matches, is listed itself.
On a terminal in columns: name, kind, content. Elsewhere one absolute path a line; those of nodes end
with "/".

  -r, --recursive   all that is below, too
  --json            an array of objects with all that is known of each
)";

const char* const HelpOfGet = R"(usage: mctree get [--wait CONDITION] PATH...

Prints the content of PATH, raw and without its unit. Of several paths, and of a pattern, whose nodes do
not count, a line each: the path, a tab, the content, with control characters and "\" as \n, \t, \\ and
the like. "set -f" reads such lines.

  --wait CONDITION  waits until all paths are there and CONDITION holds for all of them: "exists", or one
                    of = != < <= > >= with a content as "set" takes it, or ~ with a pattern. For ever,
                    unless --timeout is given. What may take a moment is best waited for so:
                      mctree get --wait =Ready /MultiChannelServer/Status/BootState
  --json            an object a line, with all that is known
)";

const char* const HelpOfSet = R"(usage: mctree set PATH... VALUE
       mctree set -f FILE

Sets the content of each PATH, and waits for the server's answer; to a request, below "Request" of an
MpxORV, for what becomes of it. Prints the content that holds if that is another one (limits), and what has
a unit in any case, with it: "98.5 MHz".

VALUE is true or false (on, off, yes, no, 1, 0); a number, 0x... for hexadecimal, with its unit if you
like (98.5MHz, 1 GHz, 30M, 98 500 kHz, 20 ms; frequencies count hertz where you give none); a text; the key or text of a selection's item, or (none); a list of
numbers separated by commas; or "-" for what the standard input holds, without its last line end.

  -f, --file FILE   sets what each line of FILE ("-": the standard input, line by line as it comes) says:
                    a path, a tab and a value, as "get" prints them; or a path, blanks or "=", and a
                    value. A path with blanks stands in double quotes then. "#" begins a comment.
  --json            an object a line, with how it ended ("result")
)";

const char* const HelpOfWatch = R"(usage: mctree watch [--changes-only] [--count N] PATH...

Prints what there is at and below each PATH, then every change as a line, until interrupted. What is not
there yet is waited for; a lost connection is told, and made again.

  --changes-only    without what there is
  --count N         ends after N changes; what there is does not count
  --json            an object a line; "event" says what it is
)";

const char* const HelpOfHold = R"(usage: mctree hold PATH...

Asks for each PATH as one who uses it, and prints "held PATH" when the server has said yes. That keeps an
MpxORV alive, with its channel and its policies, until interrupted:

  mctree hold /MultiChannelServer/DynamicMpxORVs/Mine

A lost connection is told ("lost PATH"), and made again.
)";

const char* const HelpOfInfo = R"(usage: mctree info

Tells of the server: what it calls itself, its address, encryption, the version of the protocol, the round
trip, and how many values it shows us.
)";

const char* const HelpOfStations = R"(usage: mctree stations nats://HOST[:PORT][,HOST...]

Asks at NATS who offers a station there, and prints a line each: station, server and version, machine, since
when, and how its device is. "nats://HOST/STATION" is then its address for --connect.

  --json            an object a line
)";

const char* const HelpOfEvents = R"(usage: mctree events [--follow] [--count N]

Prints the last events of the server, the oldest first: date and time here, how much it matters (info, notice,
warning, alarm), whose it is, and what it was. The server keeps the last 2,000 since it started.

  --count N         the last N of them (20)
  --follow          then each that happens, until interrupted or the connection is lost
  --json            an object a line, as the server tells it: "n" numbers it, "time" is in UTC, "code" and
                    "args" say by a code what "text" says in English
)";

}  // namespace

QString HelpText(ECommand topic) {
    switch (topic) {
        case ECommand::List:
            return QString::fromUtf8(HelpOfList);
        case ECommand::Get:
            return QString::fromUtf8(HelpOfGet);
        case ECommand::Set:
            return QString::fromUtf8(HelpOfSet);
        case ECommand::Watch:
            return QString::fromUtf8(HelpOfWatch);
        case ECommand::Hold:
            return QString::fromUtf8(HelpOfHold);
        case ECommand::Info:
            return QString::fromUtf8(HelpOfInfo);
        case ECommand::Stations:
            return QString::fromUtf8(HelpOfStations);
        case ECommand::Events:
            return QString::fromUtf8(HelpOfEvents);
        default:
            return QString::fromUtf8(HelpOfAll);
    }
}

}  // namespace mctree
