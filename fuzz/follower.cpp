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

#include <algorithm>

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
    if (!reader.ReadHeader(&message)) return;
    TellMessage("client", message, bytes);
    if (message.type == vt::EMessage::Hello) m_isHelloSent = true;
    if (!m_isHelloSent) return;
    if (message.type == vt::EMessage::Subscribe && m_subscriptions.count(message.sub) == 0) {
        m_subscriptions[message.sub].path = vt::NormalisedPath(message.path);
        m_over.erase(message.sub);
    }
    if (message.type == vt::EMessage::Unsubscribe && m_subscriptions.erase(message.sub) != 0)
        m_over.insert(message.sub);
    if (message.type == vt::EMessage::Write || message.type == vt::EMessage::Create)
        m_requests.insert(message.req);
}

void Follower::OnReceived(const QByteArray& bytes) {
    Check(!m_hasEnded, "nothing comes after a bye");
    Check(static_cast<quint32>(bytes.size()) <=
              (m_isWelcome ? vtlimits::MaxFrame : vtlimits::MaxFrameBeforeWelcome),
          "a frame is not too large");
    vt::Message message;
    vt::MessageReader reader(bytes.constData(), bytes.size());
    const bool isRead = reader.ReadHeader(&message);
    Check(isRead, "a server's message can be read", reader.Error());
    TellMessage("server", message, bytes);
    if (message.type == vt::EMessage::Bye) {
        Check(!message.reason.isEmpty(), "a bye has a reason");
        m_hasEnded = true;
        return;
    }
    if (message.type == vt::EMessage::Welcome) {
        Check(m_isHelloSent && !m_isWelcome, "a welcome answers the hello");
        m_isWelcome = true;
        return;
    }
    Check(m_isWelcome, "nothing but a bye comes before the welcome");
    if (message.type == vt::EMessage::Answer) {
        const auto request = m_requests.find(message.req);
        Check(request != m_requests.end(), "an answer belongs to a request");
        m_requests.erase(request);
        Check(message.result < vt::EResult::Denied || !message.reason.isEmpty(), "who is denied learns why");
        return;
    }
    if (message.type == vt::EMessage::Ping || message.type == vt::EMessage::Pong) return;
    OnSubscriptionMessage(message, reader);
}

void Follower::OnSubscriptionMessage(const vt::Message& message, vt::MessageReader& reader) {
    using vt::EMessage;
    const bool isChanges = vt::CarriesChanges(message.type);
    if (isChanges || message.type == EMessage::End) ++m_toAck;
    Check(isChanges || message.type == EMessage::End || message.type == EMessage::Subscribed ||
              message.type == EMessage::Absent,
          "a server sends what servers send");
    const auto found = m_subscriptions.find(message.sub);
    if (found == m_subscriptions.end()) {
        Check(m_over.count(message.sub) != 0, "a subscription was asked for");
        return;
    }
    Subscription& subscription = found->second;
    if (message.type == EMessage::Subscribed) {
        const QString path = subscription.path;
        subscription = Subscription();
        subscription.path = path;
        subscription.isFollowing = true;
    } else if (message.type == EMessage::Absent) {
        subscription.isFollowing = subscription.isComplete = false;
        if (message.reason.isEmpty()) return;
        m_subscriptions.erase(found);
        m_over.insert(message.sub);
    } else {
        OnChanges(subscription, message, reader);
    }
}

void Follower::OnChanges(Subscription& subscription, const vt::Message& message, vt::MessageReader& reader) {
    Check(subscription.isFollowing, "changes come after subscribed");
    Check(message.seq == ++subscription.sequence, "no number is left out");
    Check((message.type == vt::EMessage::Batch) == subscription.isComplete,
          "batches come after the snapshot");
    if (message.type == vt::EMessage::End) {
        Check(subscription.items.count(0) != 0, "a snapshot has its root");
        subscription.isComplete = true;
        return;
    }
    subscription.hasMore = message.more;
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

void Follower::CompareWithTree() const {
    if (m_hasEnded || !m_isWelcome) return;
    Check(m_requests.empty(), "every request was answered");
    for (const auto& subscription : m_subscriptions)
        Compare(subscription.second);
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
