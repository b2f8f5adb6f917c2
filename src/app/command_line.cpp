#include "app/command_line.h"

#include "core/files.h"

#include <QUrl>

CCommandLine CCommandLine::Parse(int argc, const char* const* argv)
{
    CCommandLine line;
    for (int i = 0; i < argc; ++i) {
        if (std::string_view(argv[i]) != "-profile") {
            line.arguments.emplace_back(argv[i]);
        } else if (i + 1 < argc) {
            line.profile = argv[++i];
        }
    }
    return line;
}

std::string JoinForOtherInstance(const std::vector<std::string>& arguments, const std::string& folder)
{
    std::string message;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        std::string argument = arguments[i];
        if (i > 0) {
            message += ' ';
            const bool relative = !argument.empty() && argument.front() != '/';
            if (relative && isRegularFile(folder + "/" + argument)) argument = folder + "/" + argument;
        }
        if (argument.find(' ') != std::string::npos && argument.front() == '/') {
            argument = QUrl::fromLocalFile(QString::fromStdString(argument)).toEncoded().toStdString();
        }
        message += argument;
    }
    return message;
}

std::string LocalPath(const std::string& argument)
{
    if (argument.rfind("file://", 0) != 0) return argument;
    const QUrl url = QUrl::fromEncoded(QByteArray::fromStdString(argument), QUrl::StrictMode);
    const bool here = url.isValid() && url.host().isEmpty() && !url.path().isEmpty();
    return here ? url.toLocalFile().toStdString() : argument;
}
