#include "tools/zt_chart/cli.h"

#include <cmath>
#include <cstdio>
#include <sys/stat.h>

#include <QJsonDocument>
#include <QLocale>

std::optional<std::vector<double>> ParseNumbers(const QString& text, std::size_t count)
{
    std::vector<double> numbers;
    for (const QString& part : text.split(QLatin1Char(','))) {
        bool good = false;
        const double number = QLocale::c().toDouble(part.trimmed(), &good);
        if (!good || !std::isfinite(number)) return std::nullopt;
        numbers.push_back(number);
    }
    if (numbers.size() != count) return std::nullopt;
    return numbers;
}

std::optional<int> ParseWhole(const QString& text)
{
    bool good = false;
    const int number = text.toInt(&good);
    return good ? std::optional(number) : std::nullopt;
}

void PrintJson(const QJsonObject& object)
{
    std::fputs(QJsonDocument(object).toJson(QJsonDocument::Indented).constData(), stdout);
}

bool IsSameFile(const std::string& a, const std::string& b)
{
    struct stat of_a = {};
    struct stat of_b = {};
    return stat(a.c_str(), &of_a) == 0 && stat(b.c_str(), &of_b) == 0 && of_a.st_dev == of_b.st_dev &&
           of_a.st_ino == of_b.st_ino;
}
