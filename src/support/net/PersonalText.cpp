#include "support/net/PersonalText.h"

#include "support/config/ConfigKeys.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonObject>
#include <QSysInfo>
#include <QUrl>
#include <algorithm>

namespace {

constexpr ushort kFirstUnspaced = 0x2E80; // from here on scripts are written without spaces between words

// A mail address and the like are found from their start on and never tried again from the middle, so that a
// line of any length costs its length.
constexpr char kMail[] = R"((?<![\w.+-])[\w.+-]++@[\w-]++(?:\.[\w-]++)+)";
constexpr char kHardwareAddress[] =
    R"((?<![0-9A-Za-z])[0-9A-F]{2}(?<separator>[:_-])(?:[0-9A-F]{2}\k<separator>){4}[0-9A-F]{2}(?![0-9A-Za-z]))";
constexpr char kContactLine[] = R"((?:User contact info:|feedback\.userContactInfo)(?<contact>[^\r\n]+))";

constexpr char kNoLetterBefore[] = R"((?<![^\W_\x{2E80}-\x{10FFFF}]))";
constexpr char kNoLetterAfter[] = R"((?![^\W_\x{2E80}-\x{10FFFF}]))";

bool isSpacedLetter(QChar letter)
{
    return letter.isLetterOrNumber() && letter.unicode() < kFirstUnspaced;
}

bool isPersonal(const QString& word)
{
    static const QStringList everybodys{QStringLiteral("root"), QStringLiteral("user"),
                                        QStringLiteral("localhost"), QStringLiteral("localhost.localdomain"),
                                        QSysInfo::productType()};
    if (word.size() < 2 || everybodys.contains(word, Qt::CaseInsensitive))
        return false;
    constexpr int kShortestNumber = 4; // shorter ones are in every line of a log
    return word.size() >= kShortestNumber ||
           !std::all_of(word.begin(), word.end(), [](QChar c) { return c.isDigit(); });
}

/// Whole words alone; what starts with a letter is looked for at the starts of words only.
QString needlesPattern(const QStringList& needles)
{
    QStringList words, others;
    for (const QString& needle : needles) {
        QString pattern = QRegularExpression::escape(needle);
        if (isSpacedLetter(needle.back()))
            pattern += QLatin1String(kNoLetterAfter);
        (isSpacedLetter(needle.front()) ? words : others) += pattern;
    }
    if (!words.isEmpty())
        others += QStringLiteral("%1(?:%2)").arg(QLatin1String(kNoLetterBefore), words.join(u'|'));
    return others.join(u'|');
}

} // namespace

PersonalText::PersonalText(const PersonalFacts& facts)
{
    addWords(facts.contacts, QStringLiteral("<contact>"));
    addWords(facts.machineIds, QStringLiteral("<machine>"));
    addWords(facts.hosts, QStringLiteral("<host>"));
    for (const QString& host : facts.hosts)
        addWords({host.section(u'.', 0, 0)}, QStringLiteral("<host>"));
    addWords(facts.users, QStringLiteral("<user>"));
    for (const QString& home : facts.homes)
        addHome(home);

    QStringList needles = m_replacements.keys();
    std::sort(needles.begin(), needles.end(), [](const QString& a, const QString& b) {
        return a.size() != b.size() ? a.size() > b.size() : a < b; // a host's name with its domain first
    });
    QStringList patterns{QLatin1String(kMail), QLatin1String(kHardwareAddress), QLatin1String(kContactLine)};
    if (!needles.isEmpty())
        patterns.append(needlesPattern(needles));
    m_pattern.setPatternOptions(QRegularExpression::CaseInsensitiveOption |
                                QRegularExpression::UseUnicodePropertiesOption);
    m_pattern.setPattern(patterns.join(u'|'));
    m_pattern.optimize();
}

void PersonalText::addWords(const QStringList& words, const QString& replacement)
{
    for (const QString& word : words) {
        const QString trimmed = word.trimmed();
        if (!isPersonal(trimmed))
            continue;
        addNeedle(trimmed, replacement);
        addNeedle(QString::fromLatin1(QUrl::toPercentEncoding(trimmed)), replacement);
    }
}

void PersonalText::addHome(const QString& path)
{
    QString home = QDir::fromNativeSeparators(path);
    while (home.endsWith(u'/'))
        home.chop(1);
    if (home.isEmpty())
        return;
    const QString replacement = QStringLiteral("~");
    QString backslashes = home;
    backslashes.replace(u'/', u'\\');
    QString escaped = backslashes;
    escaped.replace(QLatin1String("\\"), QLatin1String("\\\\"));
    addNeedle(home, replacement);
    addNeedle(backslashes, replacement);
    addNeedle(escaped, replacement);
    addNeedle(QString::fromLatin1(QUrl::toPercentEncoding(home)), replacement);
    addNeedle(QString::fromLatin1(QUrl::toPercentEncoding(home, "/:")), replacement);
}

void PersonalText::addNeedle(const QString& needle, const QString& replacement)
{
    QString& known = m_replacements[needle.toLower()];
    if (known.isEmpty())
        known = replacement;
}

QString PersonalText::removedFrom(QString text) const
{
    if (!text.isValidUtf16())
        text = QString::fromUtf8(text.toUtf8()); // or nothing would match
    QString result;
    int done = 0;
    for (auto matches = m_pattern.globalMatch(text); matches.hasNext();) {
        const QRegularExpressionMatch match = matches.next();
        const QString found = match.captured();
        QString replacement = m_replacements.value(found.toLower(), QStringLiteral("<user>"));
        int from = match.capturedStart();
        if (match.capturedStart(QStringLiteral("contact")) >= 0) {
            from = match.capturedStart(QStringLiteral("contact"));
            replacement = QStringLiteral(" <contact>");
        } else if (match.capturedStart(QStringLiteral("separator")) >= 0) {
            replacement = QStringLiteral("<address>");
        } else if (found.contains(u'@')) {
            replacement = m_replacements.value(found.toLower(), QStringLiteral("<mail>"));
        }
        result += text.midRef(done, from - done);
        result += replacement;
        done = match.capturedEnd();
    }
    return done == 0 ? text : result + text.midRef(done);
}

QJsonValue PersonalText::removedFrom(const QJsonValue& value) const
{
    if (value.isString())
        return removedFrom(value.toString());
    if (value.isArray()) {
        QJsonArray result;
        for (const QJsonValue& entry : value.toArray())
            result.append(removedFrom(entry));
        return result;
    }
    if (!value.isObject())
        return value;
    QJsonObject result;
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (member.key() == QLatin1String(ConfigKeys::kUserContact.key)) {
            result.insert(member.key(), QStringLiteral("<contact>"));
            continue;
        }
        const QString key = removedFrom(member.key());
        QString free = key;
        for (int i = 2; result.contains(free); ++i)
            free = key + QStringLiteral(" %1").arg(i);
        result.insert(free, removedFrom(member.value()));
    }
    return result;
}
