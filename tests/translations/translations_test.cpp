// The game in German: sentences built by the real engine, the string tables themselves, and
// which table a locale gets.

#include "app/translations.hpp"
#include "engine/card.hpp"
#include "engine/hints.hpp"
#include "engine/localizer.hpp"
#include "engine/move_rules.hpp"
#include "store/game_confirmation.hpp"
#include "store/game_preferences.hpp"
#include "store/in_memory_defaults_store.hpp"
#include "store/sound_cues.hpp"
#include "tests/support/positions.hpp"
#include "tests/support/quick_items.hpp"
#include "ui/celebration.hpp"
#include "ui/preferences_model.hpp"

#include <QCoreApplication>
#include <QFile>
#include <QLibraryInfo>
#include <QLocale>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>
#include <QRegularExpression>
#include <QTest>
#include <QTranslator>
#include <QXmlStreamReader>

#include <QtQml/QQmlExtensionPlugin>

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <utility>
#include <variant>
#include <vector>

Q_IMPORT_QML_PLUGIN(ZelvainePlugin)

namespace zelvaine {
namespace {

using testing::card;
using testing::cards;
using testing::emptyBoard;
using testing::findItem;

// What installTranslations added goes again, so that every test starts in English.
void uninstallTranslations()
{
    auto* app = QCoreApplication::instance();
    for (QTranslator* translator : app->findChildren<QTranslator*>(Qt::FindDirectChildrenOnly)) {
        QCoreApplication::removeTranslator(translator);
        delete translator;
    }
    QLocale::setDefault(QLocale::c());
}

bool install(const char* locale)
{
    return installTranslations(*QCoreApplication::instance(), QLocale(QString::fromLatin1(locale)));
}

class Translations : public ::testing::Test {
protected:
    void TearDown() override { uninstallTranslations(); }
};

class German : public Translations {
protected:
    void SetUp() override { ASSERT_TRUE(install("de_DE")); }
};

std::string refusal(const GameState& state, const MoveSource& from, const MoveDestination& to)
{
    const MoveOutcome outcome = applyMove(state, from, to);
    const auto* refused = std::get_if<MoveRefused>(&outcome);
    return refused ? refused->reason : "(not refused)";
}

// The sentence is one template with three cards in it; German puts the suit first in a card's name.
TEST_F(German, RefusalSentenceNamesTheCardsInGerman)
{
    GameState state = emptyBoard();
    state.tableau[0] = cards("8S");
    state.tableau[1] = cards("7C");
    EXPECT_EQ(refusal(state, MoveSource::tableau(1, 0), MoveDestination::tableau(0)),
              "Sieben kann nur auf Acht der Gegenfarbe gelegt werden. Pik-Acht passt nicht.");

    // A king has no higher rank to ask for.
    state.tableau[0] = cards("QH");
    state.tableau[1] = cards("KS");
    EXPECT_EQ(refusal(state, MoveSource::tableau(1, 0), MoveDestination::tableau(0)),
              "König kann nur auf eine nächsthöhere Karte der Gegenfarbe gelegt werden. Herz-Dame passt nicht.");

    state = emptyBoard();
    state.tableau[0] = cards("6C 5D");
    EXPECT_EQ(refusal(state, MoveSource::tableau(0, 0), MoveDestination::hand()),
              "Nur die unterste Karte einer Spalte oder die oberste Karte eines Ablagestapels darf in deine Hand.");
}

TEST_F(German, HintsNameTheCardAndWhereItGoes)
{
    GameState state = emptyBoard();
    state.hand[0] = card("AD");
    EXPECT_EQ(findHint(state).text, "Karo-Ass auf Ablagestapel 1 legen.");

    state = emptyBoard();
    state.tableau[0] = cards("QS");
    state.tableau[1] = cards("KC JH 10S");
    EXPECT_EQ(findHint(state).text, "Herz-Bube samt Reihe auf Spalte 1 legen.");

    state = emptyBoard();
    state.tableau[0] = cards("5C");
    EXPECT_EQ(findHint(state).text, "Nimm die unterste Karte einer Spalte in die Hand.");
}

// The real settings, with statistics large enough to need their room.
class GermanSettings : public German {
protected:
    static bool fill(InMemoryDefaultsStore& store)
    {
        store.set(preferenceKeys::gamesPlayed, std::int64_t{12345});
        store.set(preferenceKeys::gamesWon, std::int64_t{9876});
        store.set(preferenceKeys::highScore, std::int64_t{1234});
        return true;
    }
    InMemoryDefaultsStore defaults;
    bool filled = fill(defaults); // before the preferences read them
    SilentSoundCues sound;
    GamePreferences preferences{defaults, sound};
    PreferencesModel model{preferences};
};

// Its words come from its own QML context, its counts from the locale.
TEST_F(GermanSettings, StatisticsTilesGroupDigitsTheGermanWay)
{
    QQmlEngine engine;
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Zelvaine/qml/SettingsPage.qml")));
    std::unique_ptr<QObject> page(component.createWithInitialProperties({{"preferences", QVariant::fromValue(&model)}}));
    ASSERT_TRUE(page) << component.errorString().toStdString();

    const QObject* played = page->findChild<QObject*>(QStringLiteral("gamesPlayed"));
    const QObject* best = page->findChild<QObject*>(QStringLiteral("bestGame"));
    ASSERT_TRUE(played && best);
    EXPECT_EQ(played->property("title").toString(), QStringLiteral("Gespielt"));
    EXPECT_EQ(played->property("value").toString(), QStringLiteral("12.345"));
    // A move count is not a quantity to group.
    EXPECT_EQ(best->property("value").toString(), QStringLiteral("1234 Züge"));
    EXPECT_EQ(completionSummary(212), "Du hast alle acht Ablagestapel in 212 Zügen gebaut.");
    EXPECT_EQ(completionSummary(1), "Du hast alle acht Ablagestapel in 1 Zug gebaut.");
}

// A text that reaches the player without being marked for the tables would stay English here.
TEST_F(Translations, EveryCoreTextComesOutGerman)
{
    std::vector<ConfirmationTexts> english;
    for (int c = 0; c <= static_cast<int>(GameConfirmation::openSharedGame); ++c) {
        english.push_back(confirmationTexts(static_cast<GameConfirmation>(c)));
    }
    ASSERT_TRUE(install("de_DE"));

    for (std::size_t c = 0; c < english.size(); ++c) {
        const ConfirmationTexts german = confirmationTexts(static_cast<GameConfirmation>(c));
        EXPECT_NE(german.title, english[c].title);
        EXPECT_NE(german.message, english[c].message);
        EXPECT_NE(german.confirmButton, english[c].confirmButton);
        EXPECT_NE(german.cancelButton, english[c].cancelButton);
    }
    for (int band = 0; band < 8; ++band) {
        for (std::string_view message : celebrationMessages(band)) {
            EXPECT_NE(localized(message), message) << "band " << band;
        }
    }
    for (Suit suit : allSuits) EXPECT_NE(localizedName(suit), rawValue(suit));
    for (int rank = 1; rank <= 13; ++rank) {
        EXPECT_NE(localizedName(static_cast<Rank>(rank)), word(static_cast<Rank>(rank)));
    }
}

// Every text item under `root` whose text is cut.
QStringList elidedTexts(QQuickItem* root)
{
    QStringList cut;
    if (root->isVisible() && root->property("truncated").toBool()) cut << root->property("text").toString();
    for (QQuickItem* child : root->childItems()) cut << elidedTexts(child);
    return cut;
}

// The settings window in German, with its two screens: every text fits its place. Each screen
// is saved as a picture to look at.
TEST_F(GermanSettings, EveryTextOfTheSettingsFits)
{
    QQmlEngine engine;
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Zelvaine/qml/SettingsWindow.qml")));
    std::unique_ptr<QObject> created(component.createWithInitialProperties(
        {{"preferences", QVariant::fromValue(&model)}, {"versionText", QStringLiteral("1.0 (1)")}}));
    ASSERT_TRUE(created) << component.errorString().toStdString();
    auto* window = qobject_cast<QQuickWindow*>(created.get());
    ASSERT_TRUE(window);
    model.setShowSettings(true);
    ASSERT_TRUE(QTest::qWaitForWindowExposed(window));

    QQuickItem* stack = findItem(window->contentItem(), "settingsStack");
    ASSERT_TRUE(stack);
    const auto look = [&](const char* name) {
        QTest::qWait(400); // the push
        EXPECT_EQ(elidedTexts(window->contentItem()), QStringList()) << name;
        const QString file = QStringLiteral(ZELVAINE_SCREENSHOT_DIR "/german-%1.png").arg(QLatin1String(name));
        EXPECT_TRUE(window->grabWindow().save(file)) << file.toStdString();
    };
    look("settings");
    // Each screen takes the settings' place and gives it back.
    const auto showing = [&](const char* screen) { return findItem(window->contentItem(), screen) != nullptr; };
    for (const auto& [link, screen] :
         {std::pair{"privacyLink", "privacyPolicy"}, {"acknowledgementsLink", "acknowledgements"}}) {
        QObject* found = findItem(window->contentItem(), link);
        ASSERT_TRUE(found) << link;
        QMetaObject::invokeMethod(found, "activated");
        ASSERT_TRUE(QTest::qWaitFor([&] { return showing(screen) && !stack->property("busy").toBool(); }, 2000));
        look(link);
        QQuickItem* back = findItem(window->contentItem(), "infoBackButton");
        ASSERT_TRUE(back);
        QMetaObject::invokeMethod(back, "clicked");
        ASSERT_TRUE(QTest::qWaitFor([&] { return !showing(screen) && showing(link); }, 2000));
    }
}

struct ChoiceCase {
    const char* locale;
    bool translated;
    const char* undo;
};

class TranslationChoice : public Translations, public ::testing::WithParamInterface<ChoiceCase> {};

TEST_P(TranslationChoice, GermanForEveryGermanLocaleEnglishOtherwise)
{
    EXPECT_EQ(install(GetParam().locale), GetParam().translated);
    EXPECT_EQ(QCoreApplication::translate("BoardToolbar", "Undo"), QString::fromUtf8(GetParam().undo));
}

INSTANTIATE_TEST_SUITE_P(Locales, TranslationChoice,
                         ::testing::Values(ChoiceCase{"de_DE", true, "Rückgängig"},
                                           ChoiceCase{"de_AT", true, "Rückgängig"},
                                           ChoiceCase{"de_CH", true, "Rückgängig"},
                                           ChoiceCase{"de_LU", true, "Rückgängig"}, ChoiceCase{"en_US", false, "Undo"},
                                           ChoiceCase{"en_GB", false, "Undo"}, ChoiceCase{"fr_FR", false, "Undo"},
                                           ChoiceCase{"C", false, "Undo"}));

// The file dialog's buttons are Qt's own texts; they follow the game's language when the system
// has Qt's translations (Debian: qt6-translations-l10n).
TEST_F(German, QtsOwnButtonsFollowWhenInstalled)
{
    if (!QFile::exists(QLibraryInfo::path(QLibraryInfo::TranslationsPath) + QStringLiteral("/qt_de.qm"))) {
        GTEST_SKIP() << "Qt's German translations are not installed";
    }
    EXPECT_EQ(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen"));
}

// English has no table of words, but it does have one of plural forms.
TEST_F(Translations, EnglishGetsItsPluralForms)
{
    EXPECT_FALSE(install("fr_FR"));
    const char* text = "The update server did not answer within %n second(s).";
    EXPECT_EQ(QCoreApplication::translate("zelvaine::Updater", text, nullptr, 1),
              QStringLiteral("The update server did not answer within 1 second."));
    EXPECT_EQ(QCoreApplication::translate("zelvaine::Updater", text, nullptr, 30),
              QStringLiteral("The update server did not answer within 30 seconds."));
    // The counts shown with a noun: the toolbar's, and the win's summary from the core.
    EXPECT_EQ(QCoreApplication::translate("BoardToolbar", "%n moves", nullptr, 1), QStringLiteral("1 move"));
    EXPECT_EQ(QCoreApplication::translate("BoardToolbar", "%n moves", nullptr, 2), QStringLiteral("2 moves"));
    EXPECT_EQ(completionSummary(1), "You built all eight foundations in 1 move.");
    EXPECT_EQ(completionSummary(104), "You built all eight foundations in 104 moves.");
}

struct TableEntry {
    QString context;
    QString source;
    bool numerus = false;
    QString state; // the translation's type: empty when finished, "unfinished", "vanished" …
    QStringList translations;
};

std::vector<TableEntry> readTable(const QString& name)
{
    QFile file(QStringLiteral(ZELVAINE_STRINGS_DIR "/") + name);
    if (!file.open(QIODevice::ReadOnly)) {
        ADD_FAILURE() << "cannot read " << file.fileName().toStdString();
        return {};
    }
    std::vector<TableEntry> entries;
    QString context;
    QXmlStreamReader xml(&file);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) continue;
        const auto element = xml.name();
        if (element == u"name") {
            context = xml.readElementText();
        } else if (element == u"message") {
            entries.push_back({context, {}, xml.attributes().value(QStringLiteral("numerus")) == u"yes", {}, {}});
        } else if (element == u"source" && !entries.empty()) {
            entries.back().source = xml.readElementText();
        } else if (element == u"translation" && !entries.empty()) {
            TableEntry& entry = entries.back();
            entry.state = xml.attributes().value(QStringLiteral("type")).toString();
            if (!entry.numerus) entry.translations.push_back(xml.readElementText());
        } else if (element == u"numerusform" && !entries.empty()) {
            entries.back().translations.push_back(xml.readElementText());
        }
    }
    EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
    return entries;
}

std::set<std::string> placeholders(const QString& text)
{
    static const QRegularExpression marker(QStringLiteral("%L?[1-9n]"));
    std::set<std::string> found;
    for (const auto& match : marker.globalMatch(text)) found.insert(match.captured().remove(u'L').toStdString());
    return found;
}

std::string describe(const TableEntry& entry)
{
    return (entry.context + QStringLiteral(": ") + entry.source).toStdString();
}

void expectFinished(const TableEntry& entry)
{
    EXPECT_TRUE(entry.state.isEmpty()) << entry.state.toStdString() << " — " << describe(entry);
    EXPECT_FALSE(entry.translations.isEmpty()) << describe(entry);
    for (const QString& translation : entry.translations) {
        EXPECT_FALSE(translation.trimmed().isEmpty()) << describe(entry);
        EXPECT_EQ(placeholders(translation), placeholders(entry.source))
            << translation.toStdString() << " — " << describe(entry);
        if (entry.source.contains(u'…')) {
            EXPECT_TRUE(translation.contains(u'…')) << describe(entry);
        }
    }
}

TEST(StringTables, EveryGermanTextIsTranslatedWithItsPlaceholders)
{
    const auto entries = readTable(QStringLiteral("zelvaine_de.ts"));
    EXPECT_GT(entries.size(), 150u);
    for (const TableEntry& entry : entries) expectFinished(entry);
}

TEST(StringTables, EnglishTableHoldsOnlyFinishedPluralForms)
{
    const auto entries = readTable(QStringLiteral("zelvaine_en.ts"));
    for (const TableEntry& entry : entries) {
        EXPECT_TRUE(entry.numerus) << describe(entry);
        expectFinished(entry);
        EXPECT_EQ(entry.translations.size(), 2) << describe(entry);
    }
}

// The compiled table in the binary is the one in the source tree: nothing dropped on the way.
TEST_F(German, EveryGermanTextResolvesAtRunTime)
{
    for (const TableEntry& entry : readTable(QStringLiteral("zelvaine_de.ts"))) {
        const QByteArray context = entry.context.toUtf8();
        const QByteArray source = entry.source.toUtf8();
        if (entry.numerus) {
            ASSERT_EQ(entry.translations.size(), 2) << describe(entry);
            QString one = entry.translations[0];
            QString many = entry.translations[1];
            EXPECT_EQ(QCoreApplication::translate(context, source, nullptr, 1),
                      one.replace(QStringLiteral("%n"), QStringLiteral("1")));
            EXPECT_EQ(QCoreApplication::translate(context, source, nullptr, 7),
                      many.replace(QStringLiteral("%n"), QStringLiteral("7")));
        } else {
            EXPECT_EQ(QCoreApplication::translate(context, source), entry.translations.value(0)) << describe(entry);
        }
    }
}

} // namespace
} // namespace zelvaine
