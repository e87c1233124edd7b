#include "natskinds.h"

#include "jetstreaminput.h"
#include "natsinput.h"
#include "serverfields.h"

#include <QCoreApplication>
#include <QStringList>
#include <QUrl>

namespace
{

using namespace ServerFields;

const quint16 DefaultPort = 4222;
const int MostSubjects = 100;

bool isSubject(const QByteArray& subject)
{
    const QList<QByteArray> levels = subject.split('.');
    for (int i = 0; i < levels.size(); ++i) {
        const QByteArray level = levels.at(i);
        if (level.isEmpty() || (level == ">" && i + 1 < levels.size()))
            return false;
        for (const char character : level)
            if (quint8(character) <= ' ' || character == '\x7f')
                return false;
    }
    return true;
}

bool checkSubject(const QByteArray& subject, QString* reason)
{
    if (!isSubject(subject))
        *reason = QCoreApplication::translate("InputAddress",
                                              "\"%1\" is no subject; \"fleet.*.state\" and \"fleet.>\" are some")
                      .arg(QString::fromUtf8(subject));
    return reason->isEmpty();
}

bool checkAccess(const InputAddress& address, QString* reason)
{
    const QString tls = address.getValue(QStringLiteral("tls"));
    if (address.host.isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "no host is named");
    else if (tls != QLatin1String("auto") && tls != QLatin1String("on"))
        *reason = QCoreApplication::translate("InputAddress", "tls is \"%1\"; it is auto or on").arg(tls);
    else if (address.getValue(QStringLiteral("cert")).isEmpty() != address.getValue(QStringLiteral("key")).isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "a certificate (cert) and its key (key) belong together");
    return reason->isEmpty() && NatsSetup().readServers({}, address.getValue(QStringLiteral("servers")), reason);
}

bool checkSubjects(InputAddress* address, QString* reason)
{
    if (address->path.isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "no subject is named; \">\" stands for all");
    const QVector<QByteArray> subjects = natsSubjects(address->path);
    if (subjects.size() > MostSubjects)
        *reason = QCoreApplication::translate("InputAddress", "there are more than %1 subjects").arg(MostSubjects);
    for (const QByteArray& subject : subjects)
        if (reason->isEmpty())
            checkSubject(subject, reason);
    return reason->isEmpty() && checkAccess(*address, reason);
}

bool checkStream(InputAddress* address, QString* reason)
{
    const QByteArray stream = JetStreamInput::streamOf(*address);
    const QByteArray subject = JetStreamInput::subjectOf(*address);
    const QString end = address->getValue(QStringLiteral("end"));
    if (stream.isEmpty())
        *reason = QCoreApplication::translate("InputAddress", "no stream is named; jetstream://HOST/STREAM names one");
    else if (!isSubject(stream) || stream.contains('.') || stream.contains('*') || stream.contains('>'))
        *reason =
            QCoreApplication::translate("InputAddress", "\"%1\" is no name of a stream").arg(QString::fromUtf8(stream));
    else if (end != QLatin1String("follow") && end != QLatin1String("stop"))
        *reason = QCoreApplication::translate("InputAddress", "end is \"%1\"; it is follow or stop").arg(end);
    return reason->isEmpty() && (subject.isEmpty() || checkSubject(subject, reason)) && checkAccess(*address, reason);
}

ByteInput* createNats(const InputAddress& address)
{
    return new NatsInput(address);
}

ByteInput* createJetStream(const InputAddress& address)
{
    return new JetStreamInput(address);
}

QVector<InputField::Choice> encryptions()
{
    return {{QStringLiteral("auto"), QCoreApplication::translate("InputKind", "if the server wants it")},
            {QStringLiteral("on"), QCoreApplication::translate("InputKind", "always")}};
}

QVector<InputField::Choice> ends()
{
    return {{QStringLiteral("follow"), QCoreApplication::translate("InputKind", "go on with what comes")},
            {QStringLiteral("stop"), QCoreApplication::translate("InputKind", "stop")}};
}

const InputField Servers = {
    "servers",
    QT_TRANSLATE_NOOP("InputKind", "Other &servers:"),
    QT_TRANSLATE_NOOP("InputKind", "HOST:PORT of others of a cluster, with commas between them, for when the first is "
                                   "away; those that a server tells of need not be named"),
    "",
    InputField::TextEditor,
    nullptr,
    false};
constexpr InputField Password = password(
    QT_TRANSLATE_NOOP("InputKind", "The user's, or without a user a token. It is not kept; empty takes it from the "
                                   "file, or from the environment variable CORVEL_NATS_PASSWORD"));
const InputField Credentials = {"creds",
                                QT_TRANSLATE_NOOP("InputKind", "Cre&dentials:"),
                                QT_TRANSLATE_NOOP("InputKind", "A file of credentials, with a user's token and key"),
                                "",
                                InputField::FileEditor,
                                nullptr,
                                false};
const InputField Encryption = {"tls",
                               QT_TRANSLATE_NOOP("InputKind", "Encr&ypted:"),
                               QT_TRANSLATE_NOOP("InputKind", "Whether the connection is encrypted"),
                               "auto",
                               InputField::ChoiceEditor,
                               encryptions,
                               false};

const InputField NatsFields[] = {
    Host,
    port("4222"),
    Servers,
    {"path", QT_TRANSLATE_NOOP("InputKind", "Sub&jects:"),
     QT_TRANSLATE_NOOP("InputKind", "Subjects with commas between them: \"*\" stands for one level, "
                                    "\">\" for the rest"),
     ">", InputField::TextEditor, nullptr, false},
    User,
    Password,
    PasswordFile,
    Credentials,
    Encryption,
    Authority,
    Certificate,
    Key,
    {}};

const InputField JetStreamFields[] = {
    Host,
    port("4222"),
    Servers,
    {"path", QT_TRANSLATE_NOOP("InputKind", "Strea&m:"),
     QT_TRANSLATE_NOOP("InputKind",
                       "The name of a stream; behind a slash there can be a subject: \"*\" stands for one level, "
                       "\">\" for the rest"),
     "", InputField::TextEditor, nullptr, false},
    {"end", QT_TRANSLATE_NOOP("InputKind", "&At the end:"),
     QT_TRANSLATE_NOOP("InputKind", "What becomes of it when everything was read that is stored"), "follow",
     InputField::ChoiceEditor, ends, false},
    User,
    Password,
    PasswordFile,
    Credentials,
    Encryption,
    Authority,
    Certificate,
    Key,
    {}};

} // namespace

const InputKind NatsInputKind = {"nats:// nats:",
                                 QT_TRANSLATE_NOOP("InputKind", "NATS: subjects of a server"),
                                 "nats://[USER@]HOST[:PORT][,HOST:PORT...]/SUBJECTS"
                                 "[?tls=on&password-file=FILE&creds=FILE&ca=FILE&cert=FILE&key=FILE]",
                                 "nats://localhost/fleet.*.state,plant.>",
                                 DefaultPort,
                                 InputKind::LiveProperty,
                                 "envelopes",
                                 NatsFields,
                                 checkSubjects,
                                 createNats};

const InputKind JetStreamInputKind = {"jetstream:// jetstream:",
                                      QT_TRANSLATE_NOOP("InputKind", "NATS JetStream: a stored stream"),
                                      "jetstream://[USER@]HOST[:PORT][,HOST:PORT...]/STREAM[/SUBJECT]"
                                      "[?end=stop]",
                                      "jetstream://localhost/FLEET/fleet.*.state",
                                      DefaultPort,
                                      InputKind::SessionProperty,
                                      "envelopes",
                                      JetStreamFields,
                                      checkStream,
                                      createJetStream};

QVector<QByteArray> natsSubjects(const QString& path)
{
    QVector<QByteArray> subjects;
    for (const QString& subject : path.split(QLatin1Char(',')))
        subjects.append(QUrl::fromPercentEncoding(subject.toUtf8()).toUtf8());
    return subjects;
}

bool NatsSettings::read(const InputAddress& address, QString* error)
{
    if (!setup.readServers({address.host, address.port}, address.getValue(QStringLiteral("servers")), error))
        return false;
    if (!setup.read(address.parameters, error))
        return false;
    if (!address.password.isEmpty())
        setup.password = address.password.toUtf8();
    return true;
}
