// Parsing a command line of 20 switches, against QCommandLineParser on the same switches as words, and against filling
// the map with the same names and values by hand, which no parser gets around.

#include "bench/support/Ratios.h"
#include "runtime/CCmdLineParser.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>
#include <map>

namespace {

constexpr int kSwitches = 20;

QString nameOf(int i)
{
    return QStringLiteral("switch%1").arg(i, 2, 10, QLatin1Char('0'));
}

QString valueOf(int i)
{
    return QStringLiteral("value_of_%1").arg(i);
}

/// The switches as words, "--" and all, behind a program's name.
QStringList words()
{
    QStringList all{"program"};
    for (int i = 0; i < kSwitches; ++i)
        all << "--" + nameOf(i) + '=' + valueOf(i);
    return all;
}

void parse(benchmark::State &state)
{
    const std::wstring line = words().mid(1).join(' ').replace("--", "-").toStdWString();
    CCmdLineParser parser;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.Parse(line.c_str()));
    const QString last = parser.GetVal(nameOf(kSwitches - 1).toStdWString().c_str());
    if (last != valueOf(kSwitches - 1))
        state.SkipWithError("not parsed");
}

void parseWithQt(benchmark::State &state)
{
    const QStringList arguments = words();
    QCommandLineParser parser;
    for (int i = 0; i < kSwitches; ++i)
        parser.addOption({nameOf(i), {}, "value"});
    for (auto _ : state)
        benchmark::DoNotOptimize(parser.parse(arguments));
    if (parser.value(nameOf(kSwitches - 1)) != valueOf(kSwitches - 1))
        state.SkipWithError("not parsed");
}

/// Cuts each name and value from the line, as it has to be done, at places that are known.
void fillByHand(benchmark::State &state)
{
    const QString line = words().mid(1).join(' ').replace("--", "-");
    struct Place
    {
        qsizetype name, value, end;
    };
    std::vector<Place> places;
    for (qsizetype at = 0; at >= 0; at = line.indexOf('-', at + 1)) {
        const qsizetype end = line.indexOf(' ', at);
        places.push_back({at + 1, line.indexOf('=', at) + 1, end < 0 ? qsizetype{line.size()} : end});
    }
    std::map<QString, QString> map;
    for (auto _ : state) {
        map.clear();
        for (const Place &place : places)
            map.emplace(line.mid(place.name, place.value - 1 - place.name),
                        line.mid(place.value, place.end - place.value));
    }
    if (map[nameOf(kSwitches - 1)] != valueOf(kSwitches - 1))
        state.SkipWithError("not filled");
}

} // namespace

int main(int argc, char **argv)
{
    const bench::Side subject = {"CCmdLineParser::Parse", parse};
    bench::compare(subject, bench::atMost(0.5), {"QCommandLineParser::parse", parseWithQt});
    bench::compare(subject, bench::atMost(2.5), {"filling a map by hand", fillByHand});
    return bench::run(argc, argv);
}
