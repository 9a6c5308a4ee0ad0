// SPDX-License-Identifier: Apache-2.0
// What happens while the model tells of its rows, above all what those who are told do in answer.
#include <tests/devicecontrol/multichannelserver/common/statuslisttest.h>
#include <tests/support/recordingobserver.h>

#include <functional>
#include <memory>
#include <ostream>
#include <tuple>
#include <utility>

namespace {

/// Counts the rows by what it is told, as views do: that must fit what the model says at that moment.
class Witness : public QObject {
  public:
    explicit Witness(const QAbstractItemModel& model) : m_model(model), m_count(model.rowCount()) {
        connect(&model, &QAbstractItemModel::rowsAboutToBeInserted, this,
                [this](const QModelIndex&, int first, int last) { Begin(first, last, m_count); });
        connect(&model, &QAbstractItemModel::rowsInserted, this,
                [this](const QModelIndex&, int first, int last) { End(first, last, last - first + 1); });
        connect(&model, &QAbstractItemModel::rowsAboutToBeRemoved, this,
                [this](const QModelIndex&, int first, int last) { Begin(first, last, m_count - 1); });
        connect(&model, &QAbstractItemModel::rowsRemoved, this,
                [this](const QModelIndex&, int first, int last) { End(first, last, first - last - 1); });
        connect(&model, &QAbstractItemModel::dataChanged, this,
                [this](const QModelIndex& first, const QModelIndex& last) {
                    EXPECT_TRUE(first.row() >= 0 && last.row() < m_count);
                    ExpectFit();
                });
    }
    int Count() const { return m_count; }

  private:
    void Begin(int first, int last, int highest) {
        EXPECT_EQ(m_announced, Range(-1, -1));
        EXPECT_TRUE(first >= 0 && first <= last && first <= highest);
        m_announced = {first, last};
        ExpectFit();
    }
    void End(int first, int last, int more) {
        EXPECT_EQ(m_announced, Range(first, last));
        m_announced = {-1, -1};
        m_count += more;
        ExpectFit();
    }
    void ExpectFit() {
        EXPECT_EQ(m_model.rowCount(), m_count);
        for (int row = 0; row < m_count; ++row)
            m_model.index(row, 0).data();  // as views do
    }

    using Range = std::pair<int, int>;

    const QAbstractItemModel& m_model;
    Range m_announced{-1, -1};
    int m_count;
};

/// Watches three MpxORVs, and answers once.
class StatusListAnswers : public StatusListTest {
  public:
    StatusListAnswers() {
        for (const char* name : {"Alpha", "Bravo", "Charlie"})
            Add(name);
        m_model.addMpxORVs_ValuePath(s_path);
    }

    // What may be told of.
    void LetOneCome() { m_tree.ProvideNode(PathOf("New")); }
    void LetOneGo() { Remove("Bravo"); }
    void LetOneChange() { StatusOf("Bravo")->SetComment(QStringLiteral("changed")); }

    // What may be done in answer.
    void AddAnother() { Add("Another"); }
    void AddTwo() {
        Add("Another");
        Add("More");
    }
    void RemoveIt() {
        Remove("New");
        Remove("Bravo");
    }
    void RemoveTheFirst() { Remove("Alpha"); }
    void RemoveTheLast() {
        Remove("New");
        Remove("Charlie");
    }
    void ReplaceTheFirst() {
        Remove("Alpha");
        Add("Alpha");
    }
    void RenewTheStatus() {
        for (const char* name : {"Alpha", "Bravo", "Charlie", "New"}) {
            if (m_tree.FindItem(PathOf(name)) == nullptr) continue;
            treeaccess::DeleteAt(PathOf(name) + QStringLiteral("/Status"));
            StatusOf(name);
        }
    }
    void ChangeAll() {
        for (const QString& name : NamesInTheTree())
            treeaccess::ValueAt<values::Value<QString>>(s_path + QLatin1Char('/') + name +
                                                        QStringLiteral("/Status/Comment"))
                ->SetValue(QStringLiteral("changed in answer"));
    }
    void RemoveTheParent() {
        treeaccess::DeleteAt(s_path);
        m_isWatched = false;
    }
    void ReplaceTheParent() {
        RemoveTheParent();
        AddTwo();
        m_isWatched = true;
        m_model.addMpxORVs_ValuePath(s_path);
    }
    void WatchNothing() {
        m_isWatched = false;
        m_model.removeAllMpxORVs_ValuePaths();
    }
    void WatchAnew() {
        m_model.removeAllMpxORVs_ValuePaths();
        m_isWatched = true;
        m_model.addMpxORVs_ValuePath(s_path);
    }

  protected:
    /// Does \a answer in answer to the next \a signal.
    template <class Signal>
    void Answer(Signal signal, std::function<void()> answer) {
        m_answer = std::move(answer);
        QObject::connect(&m_model, signal, &m_context, [this] {
            if (const std::function<void()> once = std::exchange(m_answer, nullptr)) once();
        });
    }
    /// What the rows have to show.
    QStringList NamesInTheTree() const {
        QStringList names;
        for (const QString& name : treeaccess::ChildNames(m_isWatched ? m_tree.FindNode(s_path) : nullptr))
            names << name;
        return names;
    }
    void ExpectThatEachRowFollowsItsMpxORV() {
        for (int row = 0; row < m_model.rowCount(); ++row) {
            const QString path = s_path + QLatin1Char('/') + TextAt(row, 0);
            EXPECT_EQ(m_model.getMpxORV_ValuePath(row), path);
            MCSMpxORVStatus(path + QStringLiteral("/Status")).SetComment(QString::number(row));
            EXPECT_EQ(TextAt(row, 3), QString::number(row));
        }
    }

    std::function<void()> m_answer;
    QObject m_context;  // goes first, so that the end of the model is answered by nobody
    bool m_isWatched = true;
};

struct Telling {
    const char* name;
    std::function<void(StatusListAnswers&)> cause;
    std::function<void(QAbstractItemModel&, const QObject& ears, std::function<void()>)> connect;
};
struct Reaction {
    const char* name;
    void (StatusListAnswers::*act)();
};
using Case = std::tuple<Telling, Reaction>;

void PrintTo(const Case& row, std::ostream* stream) {
    *stream << std::get<1>(row).name << std::get<0>(row).name;
}

template <class Signal>
Telling On(const char* name, Signal signal, void (StatusListAnswers::*cause)()) {
    return {name, [cause](StatusListAnswers& list) { (list.*cause)(); },
            [signal](QAbstractItemModel& model, const QObject& ears, std::function<void()> answer) {
                QObject::connect(&model, signal, &ears, [answer = std::move(answer)] { answer(); });
            }};
}

class StatusListAnswered : public StatusListAnswers, public testing::WithParamInterface<Case> {};

TEST_P(StatusListAnswered, RowsAreWhatTheTreeSaysAndAllHearInOrder) {
    const auto& [telling, reaction] = GetParam();
    const Witness early(m_model);
    int answers = 0;
    const QObject ears;
    telling.connect(m_model, ears, [this, &answers, act = reaction.act] {
        if (++answers == 1) (this->*act)();
    });
    const Witness late(m_model);
    telling.cause(*this);
    EXPECT_GE(answers, 1);
    EXPECT_EQ(Names(), NamesInTheTree());
    ExpectThatEachRowFollowsItsMpxORV();
    if (m_isWatched && m_tree.FindNode(s_path) != nullptr) {
        Add("Later");
        EXPECT_EQ(Names(), NamesInTheTree());
    }
    m_model.removeAllMpxORVs_ValuePaths();
    EXPECT_EQ(early.Count(), 0);
    EXPECT_EQ(late.Count(), 0);
    for (const QString& name : NamesInTheTree()) {
        const QString path = s_path + QLatin1Char('/') + name;
        EXPECT_EQ(CountObserversAt(path), 0) << name.toStdString();
        EXPECT_EQ(CountObserversAt(path + QStringLiteral("/Status/Comment")), 0) << name.toStdString();
    }
}

INSTANTIATE_TEST_SUITE_P(
    Table, StatusListAnswered,
    testing::Combine(
        testing::Values(
            On("BeforeARowComes", &QAbstractItemModel::rowsAboutToBeInserted, &StatusListAnswers::LetOneCome),
            On("AfterARowCame", &QAbstractItemModel::rowsInserted, &StatusListAnswers::LetOneCome),
            On("BeforeARowGoes", &QAbstractItemModel::rowsAboutToBeRemoved, &StatusListAnswers::LetOneGo),
            On("AfterARowWent", &QAbstractItemModel::rowsRemoved, &StatusListAnswers::LetOneGo),
            On("AsARowChanges", &QAbstractItemModel::dataChanged, &StatusListAnswers::LetOneChange),
            On("BeforeAllRowsGo", &QAbstractItemModel::rowsAboutToBeRemoved, &StatusListAnswers::WatchAnew),
            On("AfterAllRowsCame", &QAbstractItemModel::rowsInserted, &StatusListAnswers::WatchAnew),
            On("AsTheFirstOfAllGoes", &QAbstractItemModel::rowsRemoved,
               &StatusListAnswers::ReplaceTheParent)),
        testing::Values(Reaction{"AddAnother", &StatusListAnswers::AddAnother},
                        Reaction{"AddTwo", &StatusListAnswers::AddTwo},
                        Reaction{"RemoveIt", &StatusListAnswers::RemoveIt},
                        Reaction{"RemoveTheFirst", &StatusListAnswers::RemoveTheFirst},
                        Reaction{"RemoveTheLast", &StatusListAnswers::RemoveTheLast},
                        Reaction{"ReplaceTheFirst", &StatusListAnswers::ReplaceTheFirst},
                        Reaction{"RenewTheStatus", &StatusListAnswers::RenewTheStatus},
                        Reaction{"ChangeAll", &StatusListAnswers::ChangeAll},
                        Reaction{"RemoveTheParent", &StatusListAnswers::RemoveTheParent},
                        Reaction{"ReplaceTheParent", &StatusListAnswers::ReplaceTheParent},
                        Reaction{"WatchNothing", &StatusListAnswers::WatchNothing},
                        Reaction{"WatchAnew", &StatusListAnswers::WatchAnew})),
    testing::PrintToStringParamName());

TEST_F(StatusListAnswers, ARowThatGoesBeforeItCameComesAndGoes) {
    QStringList told;
    const QObject ears;
    Answer(&QAbstractItemModel::rowsAboutToBeInserted, [this] { Remove("New"); });
    QObject::connect(&m_model, &QAbstractItemModel::rowsInserted, &ears,
                     [&](const QModelIndex&, int first, int last) {
                         told << QStringLiteral("+%1-%2").arg(first).arg(last);
                         EXPECT_FALSE(At(3, 0).isValid());
                         EXPECT_EQ(m_model.getMpxORV_ValuePath(3), QString());
                     });
    QObject::connect(&m_model, &QAbstractItemModel::rowsRemoved, &ears,
                     [&](const QModelIndex&, int first, int last) {
                         told << QStringLiteral("-%1-%2").arg(first).arg(last);
                     });
    m_tree.ProvideNode(PathOf("New"));
    EXPECT_EQ(told, (QStringList{QStringLiteral("+3-3"), QStringLiteral("-3-3")}));
}

TEST_F(StatusListAnswers, WhatIsAddedInAnswerToAnAnswerComesToo) {
    int count = 0;
    const QObject ears;
    QObject::connect(&m_model, &QAbstractItemModel::rowsInserted, &ears, [&] {
        if (++count < 5) m_tree.ProvideNode(s_path + QStringLiteral("/N%1").arg(count));
    });
    Add("New");
    EXPECT_EQ(Names(), NamesInTheTree());
    EXPECT_EQ(m_model.rowCount(), 8);
}

TEST_F(StatusListAnswers, ARowThatChangesMeanwhileIsRedrawnOnceAfterwards) {
    std::vector<int> redrawn;
    const QObject ears;
    Answer(&QAbstractItemModel::rowsRemoved, [&] {
        for (int i = 0; i < 3; ++i)
            StatusOf("Charlie")->SetComment(QString::number(i));
        EXPECT_TRUE(redrawn.empty());
    });
    QObject::connect(&m_model, &QAbstractItemModel::dataChanged, &ears,
                     [&](const QModelIndex& first) { redrawn.push_back(first.row()); });
    Remove("Alpha");
    EXPECT_EQ(redrawn, std::vector<int>{1});
    EXPECT_EQ(TextAt(1, 3), QStringLiteral("2"));
}

TEST_F(StatusListAnswers, TheStatusIsInTheTreeBeforeAViewHearsOfItsRow) {
    bool isThere = false;
    const QObject ears;
    QObject::connect(&m_model, &QAbstractItemModel::rowsAboutToBeInserted, &ears, [&] {
        isThere = m_tree.FindItem(PathOf("New/Status/OperationMode")) != nullptr;
        EXPECT_EQ(m_model.rowCount(), 3);
    });
    m_tree.ProvideNode(PathOf("New"));
    EXPECT_TRUE(isThere);
}

TEST_F(StatusListAnswers, AWatchedNodeThatGoesStillTakesItsRowsOneByOneInOrder) {
    QStringList gone;
    const QObject ears;
    QObject::connect(&m_model, &QAbstractItemModel::rowsAboutToBeRemoved, &ears,
                     [&](const QModelIndex&, int first, int last) {
                         EXPECT_EQ(first, last);
                         gone << TextAt(first, 0);
                     });
    RemoveTheParent();
    EXPECT_EQ(gone,
              (QStringList{QStringLiteral("Alpha"), QStringLiteral("Bravo"), QStringLiteral("Charlie")}));
}

/// Whoever is told destroys the model.
class StatusListDestroyed : public StatusListTest {
  protected:
    StatusListDestroyed() {
        for (const char* name : {"Alpha", "Bravo"})
            Add(name);
        m_own->addMpxORVs_ValuePath(s_path);
    }
    template <class Signal>
    void DestroyOn(Signal signal) {
        QObject::connect(m_own.get(), signal, m_own.get(), [this] { m_own.reset(); });
    }
    void ExpectThatNobodyObserves() {
        EXPECT_EQ(m_own, nullptr);
        for (const char* path : {"/Mpx", "/Mpx/Alpha", "/Mpx/Alpha/Status", "/Mpx/Alpha/Status/Comment",
                                 "/Mpx/Bravo", "/Mpx/Bravo/Status", "/Mpx/Bravo/Status/Comment"})
            EXPECT_LE(CountObserversAt(QString::fromLatin1(path)), 0) << path;
    }

    std::unique_ptr<MCSMpxORVStatusListModel> m_own = std::make_unique<MCSMpxORVStatusListModel>();
};

TEST_F(StatusListDestroyed, WhenARowCame) {
    DestroyOn(&QAbstractItemModel::rowsInserted);
    m_tree.ProvideNode(PathOf("New"));
    ExpectThatNobodyObserves();
    EXPECT_EQ(CountObserversAt(PathOf("New")), 0);
}

TEST_F(StatusListDestroyed, WhenARowWent) {
    DestroyOn(&QAbstractItemModel::rowsRemoved);
    Remove("Bravo");
    ExpectThatNobodyObserves();
}

TEST_F(StatusListDestroyed, WhenTheFirstRowWentWithTheParent) {
    DestroyOn(&QAbstractItemModel::rowsRemoved);
    treeaccess::DeleteAt(s_path);
    EXPECT_EQ(m_own, nullptr);
}

TEST_F(StatusListDestroyed, WhenAllRowsWent) {
    DestroyOn(&QAbstractItemModel::rowsRemoved);
    m_own->removeAllMpxORVs_ValuePaths();
    ExpectThatNobodyObserves();
}

TEST_F(StatusListDestroyed, WhenARowChanges) {
    DestroyOn(&QAbstractItemModel::dataChanged);
    StatusOf("Alpha")->SetComment(QStringLiteral("changed"));
    ExpectThatNobodyObserves();
}

TEST_F(StatusListDestroyed, WhenAStatusComesBack) {
    treeaccess::DeleteAt(PathOf("Bravo/Status"));
    DestroyOn(&QAbstractItemModel::dataChanged);
    StatusOf("Bravo");
    ExpectThatNobodyObserves();
}

TEST_F(StatusListDestroyed, WhenANewStatusIsAddedToTheTree) {
    RecordingObserver meddler([this](Observable*, TChangeCode code) {
        if (code == changecode::StructureChanged && m_tree.FindItem(PathOf("New/Status")) != nullptr)
            m_own.reset();
    });
    m_tree.GetRoot()->AddObserver(&meddler);
    m_tree.ProvideNode(PathOf("New"));
    m_tree.GetRoot()->DeleteObserver(&meddler);
    ExpectThatNobodyObserves();
    EXPECT_EQ(CountObserversAt(PathOf("New")), 0);
}

}  // namespace
