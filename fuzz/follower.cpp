// SPDX-License-Identifier: Apache-2.0
#include <fuzz/follower.h>

#include <fuzz/check.h>
#include <fuzz/narration.h>

#include <platform/values/node.h>
#include <platform/values/tree.h>
#include <platform/vtclient/wire/changewriter.h>
#include <platform/vtclient/wire/itemkinds.h>
#include <platform/vtclient/wire/treepath.h>
#include <platform/vtclient/wire/vtlimits.h>
#include <tests/platform/vtclient/memoryroads.h>

#include <algorithm>
#include <utility>

namespace {

QString Named(const vt::TreeChange& change) {
    return QStringLiteral("change %1 of %2").arg(static_cast<int>(change.change)).arg(change.id);
}

/// -0 equals 0, so whoever has one need not take the other.
vt::Content WithoutSign(vt::Content content) {
    if (double* const number = std::get_if<double>(&content)) *number += 0.0;
    if (auto* const list = std::get_if<QVector<double>>(&content))
        for (double& number : *list)
            number += 0.0;
    return content;
}

/// Those whose names and paths are short enough.
std::vector<values::TreeItem*> TravellingChildren(const values::Node& node) {
    std::vector<values::TreeItem*> children = node.GetTreeItems();
    const int length = node.GetPathName().size() + 1;
    const auto isLong = [length](const values::TreeItem* child) {
        const int size = child->GetName().size();
        return size > vtlimits::MaxNameLength || length + size > vtlimits::MaxPathLength;
    };
    children.erase(std::remove_if(children.begin(), children.end(), isLong), children.end());
    return children;
}

/// How \a item is described on the wire, without name and place.
QByteArray Described(const vt::ItemDescription& item) {
    vt::TreeChange change;
    change.change = vt::EChange::Added;
    change.item = item;
    change.item.content = WithoutSign(item.content);
    change.item.minimum = WithoutSign(item.minimum);
    change.item.maximum = WithoutSign(item.maximum);
    for (vt::Choice& choice : change.item.choices)
        choice.number += 0.0;
    vt::ChangeWriter writer;
    writer.Write(change);
    return writer.Take();
}

}  // namespace

void Follower::OnSent(const QByteArray& bytes) {
    if (m_hasEnded) return;
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    if (!ReadAny(reader, &message)) return;
    TellMessage("client", message, bytes);
    if (std::holds_alternative<vt::HelloMessage>(message)) m_isHelloSent = true;
    if (m_isHelloSent) std::visit([this](const auto& whichever) { OnSentMessage(whichever); }, message);
}

void Follower::OnSentMessage(const vt::SubscribeMessage& subscribe) {
    if (m_subscriptions.count(subscribe.sub) != 0) return;
    m_subscriptions[subscribe.sub].path = vt::NormalisedPath(subscribe.path);
    m_over.erase(subscribe.sub);
}

void Follower::OnSentMessage(const vt::UnsubscribeMessage& unsubscribe) {
    if (m_subscriptions.erase(unsubscribe.sub) != 0) m_over.insert(unsubscribe.sub);
}

void Follower::OnReceived(const QByteArray& bytes) {
    Check(!m_hasEnded, "nothing comes after a bye");
    Check(static_cast<quint32>(bytes.size()) <=
              (m_isWelcome ? vtlimits::MaxFrame : vtlimits::MaxFrameBeforeWelcome),
          "a frame is not too large");
    vt::MessageReader reader(bytes.constData(), bytes.size());
    const auto receive = [&](const auto& message) {
        using M = std::decay_t<decltype(message)>;
        if (IsTelling()) TellMessage("server", message, bytes);
        constexpr bool IsFirst = std::is_same_v<M, vt::WelcomeMessage> || std::is_same_v<M, vt::ByeMessage>;
        Check(m_isWelcome || IsFirst, "nothing but a bye comes before the welcome");
        if constexpr (vt::IsSentBy<M>(vt::ESender::Server))
            On(message, reader);
        else
            FailCheck(QStringLiteral("a server sends what servers send"));
    };
    const bool isRead = reader.Read(receive);
    Check(isRead, "a server's message can be read", reader.Error());
}

void Follower::On(const vt::WelcomeMessage& /*welcome*/, vt::MessageReader& /*reader*/) {
    Check(m_isHelloSent && !m_isWelcome, "a welcome answers the hello");
    m_isWelcome = true;
}

void Follower::On(const vt::ByeMessage& bye, vt::MessageReader& /*reader*/) {
    Check(!bye.reason.isEmpty(), "a bye has a reason");
    m_hasEnded = true;
}

void Follower::On(const vt::AnswerMessage& answer, vt::MessageReader& /*reader*/) {
    const auto request = m_requests.find(answer.req);
    Check(request != m_requests.end(), "an answer belongs to a request");
    m_requests.erase(request);
    Check(answer.result < vt::EResult::Denied || !answer.reason.isEmpty(), "who is denied learns why");
}

void Follower::On(const vt::RecalledMessage& recalled, vt::MessageReader& /*reader*/) {
    const auto recall = m_recalls.find(recalled.req);
    Check(recall != m_recalls.end(), "a page of the history was asked for");
    m_recalls.erase(recall);
    Check(recalled.result == vt::EResult::Done || !recalled.reason.isEmpty(), "who is denied learns why");
}

void Follower::On(const vt::RoadMessage& road, vt::MessageReader& /*reader*/) {
    Subscription* const subscription = Find(road.sub);
    if (subscription == nullptr) return;
    Check(subscription->isFollowing, "a road is offered for what is there");
    if (subscription->road != road.road) {
        Check(!subscription->isOnRoad, "a road is not exchanged for another");
        subscription->road = road.road;
        subscription->keys.clear();
    }
    const QString place = QStringLiteral("tower/") + road.road;
    subscription->keys[road.key] =
        std::make_shared<vt::RoadSeal>(place, road.key, QByteArray::fromHex(road.secret.toLatin1()));
}

void Follower::On(const vt::AtMessage& at, vt::MessageReader& /*reader*/) {
    Subscription* const subscription = Find(at.sub);
    if (subscription == nullptr) return;
    Check(!subscription->road.isEmpty(), "a position is one on a road");
    if (subscription->isOnRoad) return ReadRoad(*subscription, at.number);
    Check(subscription->isComplete, "a road is taken behind the snapshot");
    subscription->isOnRoad = true;
    subscription->applied = at.number;
}

QString Follower::RoadOf(quint32 sub) const {
    const auto found = m_subscriptions.find(sub);
    return found == m_subscriptions.end() ? QString() : found->second.road;
}

void Follower::ReadRoad(Subscription& subscription, quint64 last) const {
    for (const MemoryBus::Published& one : m_bus.published) {
        if (one.road != subscription.road) continue;
        const auto envelope = vt::RoadEnvelope::Of(one.message.constData(), one.message.size());
        Check(envelope.has_value(), "a road has messages");
        if (envelope->number <= subscription.applied || envelope->number > last) continue;
        Check(envelope->number == subscription.applied + 1, "no number is left out on a road");
        const auto key = subscription.keys.find(envelope->key);
        Check(key != subscription.keys.end(), "who follows a road has its keys");
        const auto content = key->second->Open(*envelope);
        Check(content.has_value(), "and they open it");
        if (subscription.joined.empty()) subscription.joinedAt = envelope->number;
        subscription.joined.append(*content);
        subscription.applied = envelope->number;
        if (!envelope->isContinued) ApplyBatch(subscription);
    }
}

void Follower::ApplyBatch(Subscription& subscription) {
    const std::string whole = std::exchange(subscription.joined, {});
    vt::MessageReader reader(whole.data(), static_cast<qint64>(whole.size()));
    const auto receive = [&subscription](const auto& message) {
        if constexpr (std::is_same_v<std::decay_t<decltype(message)>, vt::BatchMessage>) {
            Check(message.sub == 0 && message.seq == subscription.joinedAt, "a batch on a road is numbered");
            subscription.hasMore = message.more;
            return;
        }
        FailCheck(QStringLiteral("there is nothing but batches on a road"));
    };
    Check(reader.Read(receive), "what is on a road can be read", reader.Error());
    vt::TreeChange change;
    while (reader.NextChange(&change))
        Apply(subscription, change);
    Check(reader.Error().isEmpty(), "changes can be read", reader.Error());
}

/// Null if it is over.
Follower::Subscription* Follower::Find(quint32 sub) {
    const auto found = m_subscriptions.find(sub);
    if (found != m_subscriptions.end()) return &found->second;
    Check(m_over.count(sub) != 0, "a subscription was asked for");
    return nullptr;
}

void Follower::On(const vt::SubscribedMessage& subscribed, vt::MessageReader& /*reader*/) {
    Subscription* const subscription = Find(subscribed.sub);
    if (subscription == nullptr) return;
    const QString path = subscription->path;
    *subscription = Subscription();
    subscription->path = path;
    subscription->isFollowing = true;
}

void Follower::On(const vt::AbsentMessage& absent, vt::MessageReader& /*reader*/) {
    Subscription* const subscription = Find(absent.sub);
    if (subscription == nullptr) return;
    subscription->isFollowing = subscription->isComplete = subscription->isOnRoad = false;
    subscription->road.clear();
    if (absent.reason.isEmpty()) return;
    m_subscriptions.erase(absent.sub);
    m_over.insert(absent.sub);
}

void Follower::CheckNext(Subscription& subscription, quint64 seq) {
    Check(subscription.isFollowing, "changes come after subscribed");
    Check(seq == ++subscription.sequence, "no number is left out");
}

void Follower::On(const vt::SnapshotMessage& snapshot, vt::MessageReader& reader) {
    ++m_toAck;
    Subscription* const subscription = Find(snapshot.sub);
    if (subscription == nullptr) return;
    CheckNext(*subscription, snapshot.seq);
    Check(!subscription->isComplete, "a snapshot comes before its end");
    subscription->hasMore = false;
    OnChanges(*subscription, reader);
}

void Follower::On(const vt::EndMessage& end, vt::MessageReader& /*reader*/) {
    ++m_toAck;
    Subscription* const subscription = Find(end.sub);
    if (subscription == nullptr) return;
    CheckNext(*subscription, end.seq);
    Check(!subscription->isComplete, "a snapshot ends once");
    Check(subscription->items.count(0) != 0, "a snapshot has its root");
    subscription->isComplete = true;
}

void Follower::On(const vt::BatchMessage& batch, vt::MessageReader& reader) {
    ++m_toAck;
    Subscription* const subscription = Find(batch.sub);
    if (subscription == nullptr) return;
    CheckNext(*subscription, batch.seq);
    Check(!subscription->isOnRoad, "who is told by a road is told once");
    Check(subscription->isComplete, "batches come after the snapshot");
    subscription->hasMore = batch.more;
    OnChanges(*subscription, reader);
}

void Follower::OnChanges(Subscription& subscription, vt::MessageReader& reader) {
    vt::TreeChange change;
    int count = 0;
    for (; reader.NextChange(&change); ++count)
        Apply(subscription, change);
    Check(reader.Error().isEmpty(), "changes can be read", reader.Error());
    Check(count != 0, "a message is worth sending");
}

void Follower::ApplyAdded(Subscription& subscription, const vt::TreeChange& change) {
    Check(change.id >= subscription.nextId, "ids grow", Named(change));
    subscription.nextId = change.id + 1;
    if (change.id != 0) {
        const auto parent = subscription.items.find(change.parent);
        Check(parent != subscription.items.end(), "a parent comes before its children", Named(change));
        Check(parent->second.item.kind == vt::EItemKind::Node, "only nodes have children", Named(change));
        parent->second.children.push_back(change.id);
    }
    Item& item = subscription.items[change.id];
    item.parent = change.parent;
    item.name = change.name;
    item.item = change.item;
    // A description that came is as good as what is made of it: limits may have moved the content.
    vt::DescribeItem(*vt::MakeItem(change.item, QStringLiteral("name")), &item.item);
}

void Follower::Remove(Subscription& subscription, quint32 id) {
    const std::vector<quint32> children = subscription.items.at(id).children;
    for (const quint32 child : children)
        Remove(subscription, child);
    subscription.items.erase(id);
}

void Follower::Apply(Subscription& subscription, const vt::TreeChange& change) {
    if (change.change == vt::EChange::Added) return ApplyAdded(subscription, change);
    const auto found = subscription.items.find(change.id);
    Check(found != subscription.items.end(), "an id is known", Named(change));
    Item& item = found->second;
    if (change.change == vt::EChange::Removed) {
        Check(change.id != 0, "the subscribed item does not go by a change");
        auto& siblings = subscription.items.at(item.parent).children;
        siblings.erase(std::remove(siblings.begin(), siblings.end(), change.id), siblings.end());
        return Remove(subscription, change.id);
    }
    Check(item.item.kind != vt::EItemKind::Node, "a node has no content", Named(change));
    // Let the value itself say what becomes of it.
    const vt::KindOperations& operations = *vt::Operations(item.item.kind);
    const std::unique_ptr<values::TreeItem> made = vt::MakeItem(item.item, QStringLiteral("name"));
    auto& value = static_cast<values::ValueBase&>(*made);
    vt::ItemDescription changed = change.item;
    changed.kind = item.item.kind;
    if (change.change == vt::EChange::Described) {
        changed.content = item.item.content;
        Check(vt::AcceptItem(&changed), "limits are of the item's kind", Named(change));
        if (operations.hasLimits) operations.describe(value, changed, nullptr);
        item.name = change.name;
        vt::DescribeItem(value, &item.item);
        item.item.flags = change.item.flags;
        return;
    }
    Check(operations.Accept(&changed.content), "a content is of the item's kind", Named(change));
    if (change.change == vt::EChange::Items) {
        Check(operations.hasChoices, "only selections have choices", Named(change));
        operations.describe(value, changed, nullptr);
    }
    operations.set(value, changed.content, nullptr);
    const unsigned flags = item.item.flags;
    vt::DescribeItem(value, &item.item);
    item.item.flags = flags;
}

std::vector<quint32> Follower::Complete() const {
    std::vector<quint32> complete;
    for (const auto& subscription : m_subscriptions)
        if (subscription.second.isComplete) complete.push_back(subscription.first);
    return complete;
}

void Follower::CompareWithTree() {
    if (m_hasEnded || !m_isWelcome) return;
    Check(m_requests.empty(), "every request was answered");
    for (auto& [sub, subscription] : m_subscriptions) {
        if (subscription.isOnRoad) ReadRoad(subscription, ~quint64(0));
        Compare(subscription);
    }
}

void Follower::Compare(const Subscription& subscription) {
    values::TreeItem* const root = values::Tree::Instance()->FindItem(subscription.path);
    Check((root != nullptr) == subscription.isComplete, "what is there is followed", subscription.path);
    if (root == nullptr) return;
    Check(!subscription.hasMore, "nothing more is to come", subscription.path);
    std::vector<std::pair<quint32, values::TreeItem*>> pairs{{0, root}};
    while (!pairs.empty()) {
        const auto [id, item] = pairs.back();
        pairs.pop_back();
        const Item& told = subscription.items.at(id);
        vt::ItemDescription description;
        vt::DescribeItem(*item, &description);
        const QByteArray is = Described(description);
        const bool isTooLarge = is.size() > vtlimits::MaxChange - vtlimits::MaxPathLength;
        Check(isTooLarge || is == Described(told.item), "what was told is what is", item->GetPathName());
        const QByteArray utf8 = item->GetName().toUtf8();  // as which half a character does not travel
        const QString name = QString::fromUtf8(utf8.constData(), utf8.size());
        Check(id == 0 || told.name == name, "names too", item->GetPathName());
        if (!item->IsNode()) continue;
        const std::vector<values::TreeItem*> children = TravellingChildren(static_cast<values::Node&>(*item));
        Check(children.size() == told.children.size(), "as many children", item->GetPathName());
        for (std::size_t i = 0; i < children.size(); ++i)
            pairs.emplace_back(told.children[i], children[i]);
    }
}
