// SPDX-License-Identifier: Apache-2.0
#include <apps/mctree/command/help.h>

namespace mctree {

QString HelpText() {
    return QStringLiteral(
        R"(usage: mctree [options] <command>

Reads and writes the tree of values of a server.

commands
  ls [-r] [PATH]     what is below PATH ("/" unless given), with -r all of it: indented on a
                     terminal, each with its path elsewhere
  get PATH           the content alone, raw and without its unit; with --json all that is known
  set PATH VALUE     sets the content and waits for the server's answer; prints the content that
                     holds if that is another one (limits). VALUE is true or false (on, off, 1, 0),
                     a number (with its unit, if you like: 98.5MHz, 30M), a text, the key or text of a
                     selection's item or (none), or a list of numbers separated by commas
  watch PATH...      prints every change as a line, until interrupted
  info               the server, the connection and how many values there are

options
  --connect HOST[:PORT]   the server (127.0.0.1:7450)
  --tls                   encrypted; also asked for by mcss:// in front of HOST, and by these:
  --ca FILE               whom the server's certificate must come from (PEM)
  --cert FILE --key FILE  our own certificate, and its key (PEM)
  --user NAME             whose token it is
  --token TOKEN           the credential; better in the environment as MCS_TOKEN, where no list of
                          processes shows it
  --timeout MS            how long to wait for the server, in milliseconds (5000)
  --count N               end watch after N changes
  --json                  JSON: an array (ls), one object (get, set, info), one object a line (watch)
  -r, --recursive         for ls
  -h, --help              this text
  -V, --version           the version
  --                      no option follows, for values that start with "-"

exit codes
  0 done   1 denied or not found   2 wrong usage   3 no connection
)");
}

}  // namespace mctree
