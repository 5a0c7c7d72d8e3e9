#include "config/ini/IniContent_p.h"
#include "tests/fuzz/Target.h"

static auto valuesOf(const ini::Content &content)
{
    QMap<QString, std::optional<QVariant>> values;
    content.forEach([&values](const ini::Entry &entry) {
        if (!entry.key.isEmpty() && entry.key.size() < 200) // longer ones take too much when their lines are many
            values[entry.key] = entry.value;
    });
    return values;
}

/// Whatever the bytes: all keys are found one by one as in the walk through the file, with an index and without, and a
/// change is there afterwards, with every other value as it was.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const ini::Content content(bytes, size % 2 == 0);
    ini::Content indexed = content;
    indexed.makeIndex();
    const auto values = valuesOf(content);
    int count = 0;
    for (auto value = values.begin(); value != values.end() && ++count <= 3; ++value) {
        const bool isAskedFor = !value.key().isEmpty() && ini::normalized(value.key()) == value.key();
        require(!isAskedFor || (content.contains(value.key()) && content.value(value.key()) == *value));
        require(content.value(value.key()) == indexed.value(value.key()));
        static_cast<void>(content.text(value.key()));
    }
    const QString first = values.isEmpty() ? QString() : ini::normalized(values.firstKey());
    const ini::Changes changes{
        {QStringLiteral("a/b"), "1"}, {QStringLiteral("k"), "2"}, {first.isEmpty() ? "a/b" : first, "1"}};
    auto expected = values;
    for (auto change = changes.begin(); change != changes.end(); ++change)
        expected[change.key()] = QVariant(QString::fromLatin1(change.value()));
    require(valuesOf(ini::Content(content.with(changes), size % 2 == 0)) == expected);
    return 0;
}
