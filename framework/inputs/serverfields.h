#ifndef SERVERFIELDS_H
#define SERVERFIELDS_H

#include "inputkind.h"

#include <QCoreApplication>

/** What several kinds of inputs ask for in the same words, of which each takes what it needs into its own fields. */
namespace ServerFields
{

constexpr InputField Host = {"host",
                             QT_TRANSLATE_NOOP("InputKind", "&Host:"),
                             QT_TRANSLATE_NOOP("InputKind", "Name or address of the server"),
                             "localhost",
                             InputField::TextEditor,
                             nullptr,
                             false};

constexpr InputField port(const char* value)
{
    return {"port",
            QT_TRANSLATE_NOOP("InputKind", "&Port:"),
            QT_TRANSLATE_NOOP("InputKind", "The number of the port"),
            value,
            InputField::PortEditor,
            nullptr,
            false};
}

constexpr InputField User = {"user", QT_TRANSLATE_NOOP("InputKind", "&User:"), "", "", InputField::TextEditor, nullptr,
                             false};

/** @param toolTip  where it comes from where nothing is typed; in English, marked for translation as the others are */
constexpr InputField password(const char* toolTip)
{
    return {"password", QT_TRANSLATE_NOOP("InputKind", "Pass&word:"), toolTip, "", InputField::PasswordEditor, nullptr,
            false};
}

constexpr InputField PasswordFile = {"password-file",
                                     QT_TRANSLATE_NOOP("InputKind", "Password f&ile:"),
                                     QT_TRANSLATE_NOOP("InputKind", "A file whose first line is the password"),
                                     "",
                                     InputField::FileEditor,
                                     nullptr,
                                     false};

constexpr InputField Authority = {
    "ca",
    QT_TRANSLATE_NOOP("InputKind", "T&rusted:"),
    QT_TRANSLATE_NOOP("InputKind", "A file of certificates that are trusted; empty for those of the system"),
    "",
    InputField::FileEditor,
    nullptr,
    false};

constexpr InputField Certificate = {
    "cert",
    QT_TRANSLATE_NOOP("InputKind", "&Certificate:"),
    QT_TRANSLATE_NOOP("InputKind", "A file with one's own certificate, if the server asks for it"),
    "",
    InputField::FileEditor,
    nullptr,
    false};

constexpr InputField Key = {"key",
                            QT_TRANSLATE_NOOP("InputKind", "K&ey:"),
                            QT_TRANSLATE_NOOP("InputKind", "The file of the certificate's key, without a password"),
                            "",
                            InputField::FileEditor,
                            nullptr,
                            false};

} // namespace ServerFields

#endif
