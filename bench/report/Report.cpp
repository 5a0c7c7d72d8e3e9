// Renews the performance page: reads rows as JSON from standard input, and writes the table and the chart of them.
//
//     report FOLDER
//
// The folder has "performance.md", whose table and the machine's description stand between two marks, and gets
// "performance.svg".

#include "bench/support/Ratios.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSysInfo>
#include <QTextStream>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

constexpr char kBegin[] = "<!-- table -->\n";
constexpr char kEnd[] = "<!-- end of the table -->\n";

QString tableOf(const std::vector<bench::Row> &rows)
{
    const auto line = [](const std::vector<std::string> &cells) {
        QString text = "|";
        for (const std::string &cell : cells)
            text += ' ' + QString::fromStdString(cell) + " |";
        return text + '\n';
    };
    QString table = line(bench::headings()) + "|---|---|---|---|---|---|---|\n";
    for (const bench::Row &row : rows)
        table += line(bench::cellsOf(row));
    return table
        + QString("\nMeasured on %1, %2, with %3 processors and Qt %4.\n")
              .arg(QSysInfo::prettyProductName(), QSysInfo::currentCpuArchitecture())
              .arg(std::thread::hardware_concurrency())
              .arg(qVersion());
}

/// How much of its limit a row uses up: 1 is the limit.
double usedOf(const bench::Row &row)
{
    const bool isAtMost = row.bound.kind == bench::Bound::Kind::timeAtMost;
    return isAtMost ? row.ratio() / row.bound.value : row.bound.value / row.ratio();
}

/// A bar for each row, as long as its share of the limit, and a line where the limit is.
QString chartOf(const std::vector<bench::Row> &rows)
{
    constexpr int labels = 430, limit = 400, scale = 540, height = 22;
    const int bottom = 34 + height * static_cast<int>(rows.size());
    QString svg;
    QTextStream out(&svg);
    out << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 )" << labels + scale + 60 << ' ' << bottom + 8
        << R"(" font-family="sans-serif" font-size="12"><rect width="100%" height="100%" fill="white"/>)" << '\n'
        << "<title>What each row uses of its limit</title>\n";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const double used = usedOf(rows[i]);
        const int y = 28 + height * static_cast<int>(i);
        const double width = std::min<double>(used * limit, scale);
        out << "<text x=\"" << labels - 8 << "\" y=\"" << y + 13 << "\" text-anchor=\"end\">"
            << QString::fromStdString(rows[i].subject).toHtmlEscaped() << "</text><rect x=\"" << labels << "\" y=\""
            << y + 2 << "\" width=\"" << width << "\" height=\"" << height - 6 << "\" fill=\""
            << (used <= 1 ? "#4477aa" : "#cc6677") << "\"/><text x=\"" << labels + width + 6 << "\" y=\"" << y + 13
            << "\">" << QString::number(100 * used, 'f', 0) << " %</text>\n";
    }
    const int x = labels + limit;
    out << "<path d=\"M" << x << " 22V" << bottom << "\" stroke=\"black\"/><text x=\"" << x
        << "\" y=\"16\" text-anchor=\"middle\">limit</text>\n</svg>\n";
    return svg;
}

bool write(const QString &path, const QString &text)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) >= 0 && file.flush();
}

bool renew(const QString &folder, const std::vector<bench::Row> &rows)
{
    QFile page(folder + "/performance.md");
    if (!page.open(QIODevice::ReadOnly))
        return false;
    QString text = QString::fromUtf8(page.readAll());
    page.close();
    const int begin = text.indexOf(kBegin), end = text.indexOf(kEnd);
    if (begin < 0 || end < begin)
        return false;
    text.replace(begin, end - begin, kBegin + tableOf(rows));
    return write(page.fileName(), text) && write(folder + "/performance.svg", chartOf(rows));
}

} // namespace

int main(int argc, char **argv)
{
    QFile input;
    if (argc != 2 || !input.open(stdin, QIODevice::ReadOnly))
        return EXIT_FAILURE;
    std::vector<bench::Row> rows;
    for (const QJsonValue &row : QJsonDocument::fromJson(input.readAll()).array())
        rows.push_back(bench::Row::fromJson(row.toObject()));
    if (!rows.empty() && renew(QString::fromLocal8Bit(argv[1]), rows))
        return EXIT_SUCCESS;
    std::fputs("no rows, or no page to renew\n", stderr);
    return EXIT_FAILURE;
}
