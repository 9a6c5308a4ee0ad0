// SPDX-License-Identifier: Apache-2.0
#include <apps/mcconsole/tune/frequencybook.h>

#include <platform/config/cfgcenter.h>
#include <platform/config/icfg.h>

#include <tests/support/printing.h>

#include <gmock/gmock.h>

#include <QtCore/QTemporaryDir>

#include <memory>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> Favourites(const FrequencyBook& book) {
    std::vector<std::string> texts;
    for (const FrequencyBook::Favourite& favourite : book.GetFavourites())
        texts.push_back(favourite.name.toStdString() + ' ' +
                        QString::number(favourite.hz, 'f', 0).toStdString());
    return texts;
}

class FrequencyBookTest : public testing::Test {
  protected:
    FrequencyBookTest() {
        CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
        root.reset(CfgCenter::Instance().OpenRoot());
    }
    ~FrequencyBookTest() override { CfgCenter::Instance().SetStorePath(QString()); }

    void Put(const char* section, const char* key, const char* content) {
        const std::unique_ptr<ICfg> there(root->ProvideSection(QString::fromLatin1(section)));
        there->WriteString(QString::fromLatin1(key), QString::fromUtf8(content));
    }

    QTemporaryDir directory;
    std::unique_ptr<ICfg> root;
    FrequencyBook book;
};

TEST_F(FrequencyBookTest, HasTheLastOneFirstAndEachOnce) {
    for (const double hz : {121.5e6, 127.5e6, 121.5e6, 118.4e6})
        book.Remember(hz);
    EXPECT_THAT(book.GetRecent(), ElementsAre(118.4e6, 121.5e6, 127.5e6));
}

TEST_F(FrequencyBookTest, ForgetsTheOldestBeyondTwenty) {
    for (int i = 0; i < 25; ++i)
        book.Remember(100e6 + i * 1e6);
    EXPECT_EQ(book.GetRecent().size(), 20U);
    EXPECT_EQ(book.GetRecent().front(), 124e6);
    EXPECT_EQ(book.GetRecent().back(), 105e6);
}

TEST_F(FrequencyBookTest, ComesBackFromTheFile) {
    book.Remember(121.5e6);
    book.Remember(127508333);
    book.SetFavourites({{QStringLiteral("Tower, \"main\""), 118.4e6}, {QString(), 243e6}});
    book.WriteRecent(*root);
    book.WriteFavourites(*root);
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("other.ini")));
    CfgCenter::Instance().SetStorePath(directory.filePath(QStringLiteral("console.ini")));
    const std::unique_ptr<ICfg> anew(CfgCenter::Instance().OpenRoot());
    FrequencyBook read;
    EXPECT_EQ(read.Read(*anew), 0);
    EXPECT_THAT(read.GetRecent(), ElementsAre(127508333, 121.5e6));
    EXPECT_THAT(Favourites(read), ElementsAre("Tower, \"main\" 118400000", " 243000000"));
}

TEST_F(FrequencyBookTest, LeavesNothingOfRemovedOnesInTheFile) {
    book.SetFavourites({{QStringLiteral("One"), 118.4e6}, {QStringLiteral("Two"), 243e6}});
    book.WriteFavourites(*root);
    book.SetFavourites({{QStringLiteral("Two"), 243e6}});
    book.WriteFavourites(*root);
    FrequencyBook read;
    EXPECT_EQ(read.Read(*root), 0);
    EXPECT_THAT(Favourites(read), ElementsAre("Two 243000000"));
}

TEST_F(FrequencyBookTest, DoesNotTouchTheFavouritesOfAnotherConsoleWhenSomethingIsGranted) {
    FrequencyBook other;
    other.SetFavourites({{QStringLiteral("Theirs"), 118.4e6}});
    other.WriteFavourites(*root);
    book.Remember(121.5e6);
    book.WriteRecent(*root);
    FrequencyBook read;
    read.Read(*root);
    EXPECT_THAT(Favourites(read), ElementsAre("Theirs 118400000"));
}

struct DamageRow {
    const char* name;
    const char* hertz;
};

class DamagedFrequencyBook : public FrequencyBookTest, public testing::WithParamInterface<DamageRow> {};

TEST_P(DamagedFrequencyBook, LeavesOutWhatCannotBeRightAndNothingElse) {
    Put("RecentFrequencies", "Hertz0", "121500000");
    Put("RecentFrequencies", "Hertz1", GetParam().hertz);
    Put("RecentFrequencies", "Hertz2", "127500000");
    Put("FavouriteFrequencies", "Name0", "Wrong");
    Put("FavouriteFrequencies", "Hertz0", GetParam().hertz);
    Put("FavouriteFrequencies", "Name1", "Right");
    Put("FavouriteFrequencies", "Hertz1", "118400000");
    Put("Other", "Key", "stays");
    EXPECT_EQ(book.Read(*root), 2);
    EXPECT_THAT(book.GetRecent(), ElementsAre(121.5e6, 127.5e6));
    EXPECT_THAT(Favourites(book), ElementsAre("Right 118400000"));
    book.WriteFavourites(*root);
    const std::unique_ptr<ICfg> other(root->OpenSection(QStringLiteral("Other")));
    EXPECT_EQ(other->ReadString(QStringLiteral("Key"), QString()), QStringLiteral("stays"));
}

INSTANTIATE_TEST_SUITE_P(, DamagedFrequencyBook,
                         testing::Values(DamageRow{"NoNumber", "Tower"}, DamageRow{"NotANumber", "nan"},
                                         DamageRow{"Infinite", "inf"}, DamageRow{"Zero", "0"},
                                         DamageRow{"Negative", "-121500000"}, DamageRow{"Megahertz", "121.5"},
                                         DamageRow{"TooGreat", "30000000001"},
                                         DamageRow{"TwoNumbers", "121500000 5"}),
                         [](const auto& row) { return std::string(row.param.name); });

TEST_F(FrequencyBookTest, MissesTheFrequencyOfAName) {
    Put("FavouriteFrequencies", "Name0", "Alone");
    EXPECT_EQ(book.Read(*root), 1);
    EXPECT_THAT(Favourites(book), IsEmpty());
}

TEST_F(FrequencyBookTest, KeepsNamesToOneShortLine) {
    Put("FavouriteFrequencies", "Name0", qPrintable(QString(5000, QLatin1Char('x'))));
    Put("FavouriteFrequencies", "Hertz0", "118400000");
    EXPECT_EQ(book.Read(*root), 0);
    EXPECT_EQ(book.GetFavourites().at(0).name.size(), FrequencyBook::LongestName);
    book.SetFavourites({{QStringLiteral(" Tower\n main "), 118.4e6}});
    EXPECT_EQ(book.GetFavourites().at(0).name, QStringLiteral("Tower main"));
}

TEST_F(FrequencyBookTest, TakesFiftyFavouritesAtMost) {
    book.SetFavourites(std::vector<FrequencyBook::Favourite>(60, {QStringLiteral("Same"), 118.4e6}));
    EXPECT_EQ(book.GetFavourites().size(), 50U);
}

/// What a console of this user has of the file that another one has too.
class Console {
  public:
    explicit Console(const QString& file) {
        CfgCenter::Instance().SetStorePath(file);  // anew, as another process does
        m_root.reset(CfgCenter::Instance().OpenRoot());
        book.ReadBy([this] {
            m_root->WriteInt(QStringLiteral("Looks"), ++m_looks);  // a commit takes in what others wrote
            m_root->CommitKey(QStringLiteral("Looks"));
            book.Read(*m_root);
        });
        QObject::connect(&book, &FrequencyBook::RecentChanged, [this] { book.WriteRecent(*m_root); });
        QObject::connect(&book, &FrequencyBook::FavouritesChanged, [this] { book.WriteFavourites(*m_root); });
    }
    ~Console() { CfgCenter::Instance().SetStorePath(QString()); }

  private:
    std::unique_ptr<ICfg> m_root;
    int m_looks = 0;

  public:
    FrequencyBook book;
};

class TwoConsoles : public testing::Test {
  protected:
    QTemporaryDir directory;
    const QString file = directory.filePath(QStringLiteral("console.ini"));
    Console one{file};
    Console other{file};
};

TEST_F(TwoConsoles, KeepWhatEachOtherHasTuned) {
    one.book.Remember(121.5e6);
    other.book.Remember(127.5e6);
    one.book.Remember(118.4e6);
    EXPECT_THAT(one.book.GetRecent(), ElementsAre(118.4e6, 127.5e6, 121.5e6));
    other.book.Refresh();
    EXPECT_EQ(other.book.GetRecent(), one.book.GetRecent());
}

TEST_F(TwoConsoles, KeepEachOthersFavouritesAlsoWhileADialogIsOpen) {
    const FrequencyBook::Favourite guard{QStringLiteral("guard"), 121.5e6};
    const FrequencyBook::Favourite tower{QStringLiteral("tower"), 118.4e6};
    const FrequencyBook::Favourite ground{QStringLiteral("ground"), 121.9e6};
    one.book.ChangeFavourites({}, {guard, tower});
    other.book.Refresh();
    const auto seen = other.book.GetFavourites();
    ASSERT_THAT(Favourites(other.book), ElementsAre("guard 121500000", "tower 118400000"));
    one.book.ChangeFavourites({guard, tower}, {tower, ground});  // while the other one edits
    other.book.ChangeFavourites(seen, {guard, tower, {QStringLiteral("mine"), 127e6}});
    EXPECT_THAT(Favourites(other.book), ElementsAre("tower 118400000", "mine 127000000", "ground 121900000"));
    one.book.Refresh();
    EXPECT_EQ(Favourites(one.book), Favourites(other.book));
}

}  // namespace
