#include "DefinitionTree.h"

#include <new>
#include <set>
#include <utility>
#include <vector>

#include "zel/com/ComPtr.h"
#include "zel/definition/DefinitionRecord.h"
#include "zel/com/Variant.h"
#include "ZEL_Definition.h"

namespace zel {
namespace {

// A collection on the way from the root to the definition at hand, and how far it is gathered.
class Level {
public:
    Level(ComPtr<IZEL_Collection> collection, DefinitionList& records) noexcept
        : collection_(std::move(collection)), records_(&records) {
        if (collection_) collection_->get_Count(&count_);
    }

    bool AtEnd() const noexcept { return position_ >= count_; }

    // The next item if it is a definition.
    ComPtr<IZEL_Definition> Next() noexcept {
        collection_->Item(Variant::Int(position_++).Get(), item_.InOut());
        if (item_.Type() != VT_DISPATCH || !V_DISPATCH(&item_.Get())) return nullptr;
        ComPtr<IZEL_Definition> definition;
        V_DISPATCH(&item_.Get())->QueryInterface(IID_IZEL_Definition, definition.OutVoid());
        return definition;
    }

    // Gathers up to the members, which are another level.
    Level Begin(ComPtr<IZEL_Definition> definition) {
        definition_ = std::move(definition);
        DefinitionRecord& record = records_->Append();
        ZEL_Definition::GatherBeforeMembers(*definition_, record);
        ComPtr<IZEL_Collection> members;
        definition_->get_Members(members.Out());
        return {std::move(members), record.Members};
    }

    void End() {
        DefinitionRecord& record = records_->Elements().back();
        ZEL_Definition::GatherBehindMembers(*definition_, record);
        record.Normalize();
        definition_.Reset();
    }

private:
    ComPtr<IZEL_Collection> collection_;
    DefinitionList* records_;
    LONG count_ = 0;
    LONG position_ = 0;
    Variant item_;  // one place for all items, which `Item` replaces
    ComPtr<IZEL_Definition> definition_;
};

// What is the same for two interfaces of one object.
ComPtr<IUnknown> IdentityOf(const ComPtr<IZEL_Definition>& definition) noexcept {
    if (!definition) return nullptr;
    return ZEL_Definition::Own(*definition) ? ComPtr<IUnknown>(definition.Share())
                                            : definition.As<IUnknown>();
}

}  // namespace

VariantArray Publish(const DefinitionList& records) {
    struct Pending {
        const DefinitionList* records;
        ZEL_Definition* owner;
    };
    VariantArray roots;
    std::vector<Pending> pending{{&records, nullptr}};
    while (!pending.empty()) {
        const auto [list, owner] = pending.back();
        pending.pop_back();
        VariantArray items;
        items.Reserve(list->Elements().size());
        for (const DefinitionRecord& record : list->Elements()) {
            ComPtr<ZEL_Definition> definition = Make<ZEL_Definition>();
            if (!definition && owner) throw std::bad_alloc();
            if (!definition) continue;  // a load goes on without what it has no room for
            definition->AssignFields(record);
            if (!record.Members.Elements().empty()) pending.push_back({&record.Members, definition.Get()});
            items.Append(Variant::Object(std::move(definition)));
        }
        if (owner)
            owner->Members().SwapItems(items);
        else
            roots.Swap(items);
    }
    return roots;
}

DefinitionList Gather(IZEL_Collection& collection) {
    DefinitionList records;
    std::vector<Level> path;
    std::vector<ComPtr<IUnknown>> owners;  // of the levels below the root
    std::set<IUnknown*> onPath;            // the same, to be found
    path.emplace_back(ComPtr<IZEL_Collection>(&collection), records);
    for (;;) {
        Level& level = path.back();
        if (level.AtEnd()) {
            path.pop_back();
            if (path.empty()) return records;
            path.back().End();
            onPath.erase(owners.back().Get());
            owners.pop_back();
            continue;
        }
        ComPtr<IZEL_Definition> definition = level.Next();
        ComPtr<IUnknown> identity = IdentityOf(definition);
        if (!definition || onPath.count(identity.Get()) > 0) continue;
        Level members = level.Begin(std::move(definition));
        if (members.AtEnd()) {
            level.End();
            continue;
        }
        onPath.insert(identity.Get());
        owners.push_back(std::move(identity));
        path.push_back(std::move(members));
    }
}

}  // namespace zel
