// SPDX-License-Identifier: Apache-2.0
#include <apps/common/problemtext.h>

#include <apps/common/codedtext.h>
#include <apps/common/eventcodes.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QHash>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>

#include <vector>

namespace {

constexpr int MostProblemDepth = 4;   // of sentences within sentences
constexpr int LongestProblem = 2048;  // characters; longer ones are no sentences
constexpr char ProblemContext[] = "Problem";

// What begins or ends otherwise would take what it does not mean: each has words of its own beside its
// arguments.
// clang-format off
constexpr const char* ProblemSentences[] = {
    // The system, of sockets and files.
    QT_TRANSLATE_NOOP("Problem", "Connection refused"),
    QT_TRANSLATE_NOOP("Problem", "Connection timed out"),
    QT_TRANSLATE_NOOP("Problem", "Connection reset by peer"),
    QT_TRANSLATE_NOOP("Problem", "Host not found"),
    QT_TRANSLATE_NOOP("Problem", "Host is down"),
    QT_TRANSLATE_NOOP("Problem", "No route to host"),
    QT_TRANSLATE_NOOP("Problem", "Network is unreachable"),
    QT_TRANSLATE_NOOP("Problem", "Network unreachable"),
    QT_TRANSLATE_NOOP("Problem", "Network operation timed out"),
    QT_TRANSLATE_NOOP("Problem", "Socket operation timed out"),
    QT_TRANSLATE_NOOP("Problem", "The remote host closed the connection"),
    QT_TRANSLATE_NOOP("Problem", "Out of resources"),
    QT_TRANSLATE_NOOP("Problem", "Unsupported socket operation"),
    QT_TRANSLATE_NOOP("Problem", "Protocol type not supported"),
    QT_TRANSLATE_NOOP("Problem", "Invalid socket descriptor"),
    QT_TRANSLATE_NOOP("Problem", "Host unreachable"),
    QT_TRANSLATE_NOOP("Problem", "The bound address is already in use"),
    QT_TRANSLATE_NOOP("Problem", "The address is not available"),
    QT_TRANSLATE_NOOP("Problem", "The address is protected"),
    QT_TRANSLATE_NOOP("Problem", "Unable to send a message"),
    QT_TRANSLATE_NOOP("Problem", "Unable to receive a message"),
    QT_TRANSLATE_NOOP("Problem", "Unable to write"),
    QT_TRANSLATE_NOOP("Problem", "Network error"),
    QT_TRANSLATE_NOOP("Problem", "Temporary error"),
    QT_TRANSLATE_NOOP("Problem", "Network dropped connection on reset"),
    QT_TRANSLATE_NOOP("Problem", "Another socket is already listening on the same port"),
    QT_TRANSLATE_NOOP("Problem", "Cannot assign requested address"),
    QT_TRANSLATE_NOOP("Problem", "Address family not supported by protocol"),
    QT_TRANSLATE_NOOP("Problem", "Broken pipe"),
    QT_TRANSLATE_NOOP("Problem", "Permission denied"),
    QT_TRANSLATE_NOOP("Problem", "Operation not permitted"),
    QT_TRANSLATE_NOOP("Problem", "No such file or directory"),
    QT_TRANSLATE_NOOP("Problem", "No such device or address"),
    QT_TRANSLATE_NOOP("Problem", "Not a directory"),
    QT_TRANSLATE_NOOP("Problem", "Is a directory"),
    QT_TRANSLATE_NOOP("Problem", "File exists"),
    QT_TRANSLATE_NOOP("Problem", "File too large"),
    QT_TRANSLATE_NOOP("Problem", "File name too long"),
    QT_TRANSLATE_NOOP("Problem", "No space left on device"),
    QT_TRANSLATE_NOOP("Problem", "Disk quota exceeded"),
    QT_TRANSLATE_NOOP("Problem", "Read-only file system"),
    QT_TRANSLATE_NOOP("Problem", "Input/output error"),
    QT_TRANSLATE_NOOP("Problem", "Too many open files"),
    QT_TRANSLATE_NOOP("Problem", "is not a file"),
    QT_TRANSLATE_NOOP("Problem", "is larger than %1 bytes"),
    QT_TRANSLATE_NOOP("Problem", "is not UTF-8 text"),
    QT_TRANSLATE_NOOP("Problem", "Unknown error"),
    QT_TRANSLATE_NOOP("Problem", "Unknown error %1"),
    // Data modules.
    QT_TRANSLATE_NOOP("Problem", "disconnected by an operator"),
    QT_TRANSLATE_NOOP("Problem", "no answer yet"),
    QT_TRANSLATE_NOOP("Problem", "the connection was closed"),
    QT_TRANSLATE_NOOP("Problem", "answers again, reconnect it"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 1: the module does not know this function"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 2: the module does not have these inputs"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 3: the module does not accept this number of inputs"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 4: the module has failed"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 5: the module needs more time"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 6: the module is busy"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 7: the module cannot do this"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 8: the module's memory is damaged"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 10: the gateway has no way to the module"),
    QT_TRANSLATE_NOOP("Problem", "Modbus exception 11: the module behind the gateway does not answer"),
    QT_TRANSLATE_NOOP("Problem", "The module's answer does not fit the request"),
    QT_TRANSLATE_NOOP("Problem", "The module refuses, for an unknown reason"),
    QT_TRANSLATE_NOOP("Problem", "The module sent something that it was not asked for"),
    QT_TRANSLATE_NOOP("Problem", "Another unit than the module answered"),
    QT_TRANSLATE_NOOP("Problem", "an IPv4 address has four numbers"),
    QT_TRANSLATE_NOOP("Problem", "no module can have this address"),
    QT_TRANSLATE_NOOP("Problem", "it has no IP address"),
    QT_TRANSLATE_NOOP("Problem", "the port does not belong to it"),
    QT_TRANSLATE_NOOP("Problem", "modules have no IPv6 addresses"),
    QT_TRANSLATE_NOOP("Problem", "names are not resolved: give the IPv4 address of the module"),
    // Connections to the server.
    QT_TRANSLATE_NOOP("Problem", "the peer closed the connection"),
    QT_TRANSLATE_NOOP("Problem", "the peer speaks TLS, this port does not"),
    QT_TRANSLATE_NOOP("Problem", "the peer does not speak this protocol: it begins with '%1'"),
    QT_TRANSLATE_NOOP("Problem", "no connection within %1 ms"),
    QT_TRANSLATE_NOOP("Problem", "no welcome within %1 ms (does it want TLS?)"),
    QT_TRANSLATE_NOOP("Problem", "no welcome within %1 ms"),
    QT_TRANSLATE_NOOP("Problem", "nothing heard for %1 ms"),
    QT_TRANSLATE_NOOP("Problem", "nothing acknowledged for %1 s"),
    QT_TRANSLATE_NOOP("Problem", "no hello in time"),
    QT_TRANSLATE_NOOP("Problem", "malformed message: %1"),
    QT_TRANSLATE_NOOP("Problem", "the server refuses: %1"),
    QT_TRANSLATE_NOOP("Problem", "the server speaks version %1"),
    QT_TRANSLATE_NOOP("Problem", "this server speaks version %1 of the protocol, not %2"),
    QT_TRANSLATE_NOOP("Problem", "the server has %1 clients"),
    QT_TRANSLATE_NOOP("Problem", "the server listens elsewhere"),
    QT_TRANSLATE_NOOP("Problem", "too many connections wait for their hello"),
    QT_TRANSLATE_NOOP("Problem", "the client sends but does not read"),
    QT_TRANSLATE_NOOP("Problem", "the server's certificate: %1"),
    QT_TRANSLATE_NOOP("Problem", "TLS failed (does the server speak TLS?): %1"),
    QT_TRANSLATE_NOOP("Problem", "TLS is not available: Qt finds no OpenSSL library"),
    QT_TRANSLATE_NOOP("Problem", "The token is not sent to %1: the connection is not encrypted"),
    QT_TRANSLATE_NOOP("Problem", "cannot read '%1': %2"),
    QT_TRANSLATE_NOOP("Problem", "the certificate '%1' expired on %2"),
    QT_TRANSLATE_NOOP("Problem", "the certificate '%1' holds from %2 on only"),
    // NATS, its library, and sessions through it.
    QT_TRANSLATE_NOOP("Problem", "this build knows no NATS"),
    QT_TRANSLATE_NOOP("Problem", "NATS refuses: %1"),
    QT_TRANSLATE_NOOP("Problem", "NATS at %1: Timeout"),
    QT_TRANSLATE_NOOP("Problem", "NATS at %1: %2"),
    QT_TRANSLATE_NOOP("Problem", "NATS answers with status %1"),
    QT_TRANSLATE_NOOP("Problem", "the connection to NATS at %1 is lost: %2"),
    QT_TRANSLATE_NOOP("Problem", "the connection to NATS at %1 is lost"),
    QT_TRANSLATE_NOOP("Problem", "nothing heard from NATS at %1 for %2 ms"),
    QT_TRANSLATE_NOOP("Problem", "this NATS has no JetStream"),
    QT_TRANSLATE_NOOP("Problem", "no answer in time"),
    QT_TRANSLATE_NOOP("Problem", "no connection"),
    QT_TRANSLATE_NOOP("Problem", "nobody there answers"),
    QT_TRANSLATE_NOOP("Problem", "NATS takes a user, a token, a file of credentials or an NKey, not several"),
    QT_TRANSLATE_NOOP("Problem", "an NKey and the file with its seed need each other"),
    QT_TRANSLATE_NOOP("Problem", "a certificate for NATS and its private key need each other"),
    QT_TRANSLATE_NOOP("Problem", "the file '%1' cannot be read"),
    QT_TRANSLATE_NOOP("Problem", "nobody offers the station '%1' at NATS"),
    QT_TRANSLATE_NOOP("Problem", "it is taken by %1"),
    QT_TRANSLATE_NOOP("Problem", "%1 on %2 (process %3, since %4)"),
    QT_TRANSLATE_NOOP("Problem", "the station speaks version %1 of the session over NATS, not %2"),
    QT_TRANSLATE_NOOP("Problem", "the station sends what is no key"),
    QT_TRANSLATE_NOOP("Problem", "the server was restarted"),
    QT_TRANSLATE_NOOP("Problem", "the server knows of no such session: it was restarted, or ended it"),
    QT_TRANSLATE_NOOP("Problem", "a message was lost over NATS (number %1 came, %2 was due)"),
    QT_TRANSLATE_NOOP("Problem", "a message of %1 bytes, where %2 are allowed"),
    QT_TRANSLATE_NOOP("Problem", "the peer acknowledges what was not sent over NATS"),
    QT_TRANSLATE_NOOP("Problem", "the peer sends more than it may over NATS"),
    QT_TRANSLATE_NOOP("Problem", "the peer has left NATS"),
    QT_TRANSLATE_NOOP("Problem", "the peer does not read"),
    QT_TRANSLATE_NOOP("Problem", "Connection Closed"),
    QT_TRANSLATE_NOOP("Problem", "Connection Disconnected"),
    QT_TRANSLATE_NOOP("Problem", "No server available for connection"),
    QT_TRANSLATE_NOOP("Problem", "Stale Connection"),
    QT_TRANSLATE_NOOP("Problem", "Secure Connection Required"),
    QT_TRANSLATE_NOOP("Problem", "Secure Connection not available"),
    QT_TRANSLATE_NOOP("Problem", "Authorization Violation"),
    QT_TRANSLATE_NOOP("Problem", "Authentication Violation"),
    QT_TRANSLATE_NOOP("Problem", "User Authentication Expired"),
    QT_TRANSLATE_NOOP("Problem", "Not Permitted"),
    QT_TRANSLATE_NOOP("Problem", "SSL Error"),
    QT_TRANSLATE_NOOP("Problem", "Slow Consumer, messages dropped"),
    QT_TRANSLATE_NOOP("Problem", "Slow Consumer"),
    QT_TRANSLATE_NOOP("Problem", "maximum connections exceeded"),
    QT_TRANSLATE_NOOP("Problem", "maximum account active connections exceeded"),
    QT_TRANSLATE_NOOP("Problem", "Maximum Payload Exceeded"),
    QT_TRANSLATE_NOOP("Problem", "Permissions Violation for Publish to \"%1\""),
    QT_TRANSLATE_NOOP("Problem", "Permissions Violation for Subscription to \"%1\""),
    // What is entered at the server, which is kept in a file.
    QT_TRANSLATE_NOOP("Problem", "'%1' cannot be written: %2"),
    QT_TRANSLATE_NOOP("Problem", "'%1' is in the way"),
    QT_TRANSLATE_NOOP("Problem", "'%1' would be larger than %2 bytes"),
    // Edits that the connection, or the server's tree, does not take.
    QT_TRANSLATE_NOOP("Problem", "there is no connection to the server"),
    QT_TRANSLATE_NOOP("Problem", "the server's content has not arrived yet"),
    QT_TRANSLATE_NOOP("Problem", "the connection was lost before the server answered"),
    QT_TRANSLATE_NOOP("Problem", "the server does not say why"),
    QT_TRANSLATE_NOOP("Problem", "the content is too large to be sent"),
    QT_TRANSLATE_NOOP("Problem", "it is too large to be sent"),
    QT_TRANSLATE_NOOP("Problem", "the item has gone"),
    QT_TRANSLATE_NOOP("Problem", "the subscription has ended"),
    QT_TRANSLATE_NOOP("Problem", "the selection has no item with this key"),
    QT_TRANSLATE_NOOP("Problem", "a text has at most %1 characters here, this one has %2"),
    QT_TRANSLATE_NOOP("Problem", "a list has at most %1 numbers, this one has %2"),
    QT_TRANSLATE_NOOP("Problem", "the path is too deep, or the name too long"),
    QT_TRANSLATE_NOOP("Problem", "a value stands in the way"),
};
// clang-format on

struct ProblemSentence {
    QRegularExpression pattern;
    const char* context;
    const char* english;
};

/// What is known: whole sentences are found at once, those with arguments are gone through.
struct KnownProblems {
    QHash<QString, ProblemSentence> whole;
    std::vector<ProblemSentence> withArguments;

    KnownProblems() {
        for (const char* const sentence : ProblemSentences)
            Add(ProblemContext, sentence);
        constexpr int fewestLetters = 8;  // of what is taken for a sentence, and no name
        // What refuses a request or a write has a code, which a write's answer has no room for.
        for (int i = static_cast<int>(ECode::FirstPart); i < static_cast<int>(ECode::Count); ++i) {
            const char* const english = eventcodes::Of(static_cast<ECode>(i)).english;
            QString words = QLatin1String(english);
            words.remove(QRegularExpression(QStringLiteral("%[1-9]|[^A-Za-z]")));
            if (words.size() >= fewestLetters) Add("CodedText", english);
        }
    }

  private:
    void Add(const char* context, const char* english) {
        const QString text = QLatin1String(english);
        if (!text.contains(QLatin1Char('%'))) {
            whole.insert(text, {QRegularExpression(), context, english});
            return;
        }
        QString pattern = QRegularExpression::escape(text);
        for (int argument = 1; argument <= CodedText::MaxArguments; ++argument)
            pattern.replace(QStringLiteral("\\%%1").arg(argument),
                            QStringLiteral("(?<a%1>.+)").arg(argument));
        withArguments.push_back(
            {QRegularExpression(QRegularExpression::anchoredPattern(pattern)), context, english});
    }
};

const KnownProblems& AllProblems() {
    static const auto& known = *new const KnownProblems;
    return known;
}

QString TranslatedProblem(const QString& english, int depth);

QString FilledProblem(const ProblemSentence& sentence, const QRegularExpressionMatch& match, int depth) {
    QStringList arguments;
    for (int argument = 1; argument <= CodedText::MaxArguments; ++argument) {
        const QString name = QStringLiteral("a%1").arg(argument);
        if (!sentence.pattern.namedCaptureGroups().contains(name)) break;
        arguments += TranslatedProblem(match.captured(name), depth + 1);
    }
    return CodedText::Filled(QCoreApplication::translate(sentence.context, sentence.english), arguments);
}

/// Where what comes behind the last ": " begins; 0: there is none.
int BehindColon(const QString& english) {
    const QLatin1String colon(": ");
    const int at = english.lastIndexOf(colon);
    return at < 0 ? 0 : at + colon.size();
}

/// What Windows means by the number of an error of sockets, which it tells in words of its own, and in its
/// own language; null if that is not known.
const char* SentenceOfWindows(const QString& number) {
    struct Row {
        int number;
        const char* sentence;
    };
    constexpr Row rows[] = {
        {10013, "Permission denied"},        {10049, "Cannot assign requested address"},
        {10051, "Network is unreachable"},   {10053, "Connection reset by peer"},
        {10054, "Connection reset by peer"}, {10060, "Connection timed out"},
        {10061, "Connection refused"},       {10064, "Host is down"},
        {10065, "No route to host"},
    };
    for (const Row& row : rows)
        if (row.number == number.toInt()) return row.sentence;
    return nullptr;
}

/// \a english, or in place of Windows' words of \a number, which may be of any language, the sentence that is
/// known. Who it is of may stand before it.
QString OfNumber(const QString& english, const QString& number) {
    const char* const ofWindows = SentenceOfWindows(number);
    return ofWindows == nullptr ? english : english.left(BehindColon(english)) + QLatin1String(ofWindows);
}

QString TranslatedProblem(const QString& english, int depth) {
    if (english.size() > LongestProblem || depth > MostProblemDepth) return english;
    const KnownProblems& known = AllProblems();
    const auto whole = known.whole.constFind(english);
    if (whole != known.whole.constEnd()) return QCoreApplication::translate(whole->context, whole->english);
    for (const ProblemSentence& sentence : known.withArguments) {
        const QRegularExpressionMatch match = sentence.pattern.match(english);
        if (match.hasMatch()) return FilledProblem(sentence, match, depth);
    }
    // Some tell the number of the error as well.
    static const auto& numbered = *new const QRegularExpression(QStringLiteral("^(.+)( \\((\\d+)\\))$"));
    if (const auto match = numbered.match(english); match.hasMatch()) {
        return TranslatedProblem(OfNumber(match.captured(1), match.captured(3)), depth + 1) +
               match.captured(2);
    }
    // A file, or who it is of, stands before what the system says.
    const int behind = BehindColon(english);
    if (behind == 0) return english;
    return english.left(behind) + TranslatedProblem(english.mid(behind), depth + 1);
}

}  // namespace

QString problemtext::Translated(const QString& english) {
    return TranslatedProblem(english, 0);
}

QString problemtext::Translated(const QString& english, const QString& number) {
    return Translated(OfNumber(english, number));
}
