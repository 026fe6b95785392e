#pragma once

#include <algorithm>
#include <map>
#include <string>
#include <vector>

#include "base/AutomationError.h"
#include "base/Text.h"
#include "frame/Platform.h"
#include "platform/SourceSafe.h"

namespace quillbox {

// A source-control database in memory, with one user at its desk. What was asked of it is recorded.
class FakeSourceSafe : public SourceSafeClient, public std::enable_shared_from_this<FakeSourceSafe> {
  public:
    struct Entry {
        bool isFolder = false;
        std::string text = {};
        std::string user = {};    // who has it checked out; empty for nobody
        std::string folder = {};  // to where
    };
    std::map<std::string, Entry> entries{{"$", {.isFolder = true}}};
    std::string me = "Writer";
    std::vector<std::string> calls;
    std::string failingCall;  // the call that fails, such as "Checkin"
    bool refusesLogin = false;

    Ref<VSSDatabase> NewDatabase() override { return make<Database>(shared_from_this()); }

    // "$/a/b", whatever the separators.
    static std::string place(const std::string& spec) {
        auto text = replaceAll(spec, "\\", "/");
        while (text.ends_with('/')) text.pop_back();
        return text;
    }
    Entry& At(const std::string& spec) {
        const auto found = entries.find(place(spec));
        if (found == entries.end()) throw AutomationError("There is no item '" + spec + "'");
        return found->second;
    }
    bool Has(const std::string& spec) const { return entries.contains(place(spec)); }
    void Put(const std::string& spec, const std::string& text) { entries[place(spec)] = {.text = text}; }
    void PutFolder(const std::string& spec) { entries[place(spec)] = {.isFolder = true}; }
    std::vector<std::string> Take() { return std::exchange(calls, {}); }

  private:
    using Owner = std::shared_ptr<FakeSourceSafe>;

    void record(const std::string& call, const std::string& rest) {
        calls.push_back(call + " " + rest);
        if (call == failingCall) throw AutomationError("the disk is full", 77);
    }
    static std::string textOf(const std::string& local) { return newFile(local)->ReadAll(); }
    static void write(const std::string& local, const std::string& text) {
        const auto file = newFile(local);
        file->CreateDirectory();
        file->Open(kWriteElement);
        file->Write(text);
        file->Close();
    }
    static std::string folderOf(const std::string& local) {
        const auto directory = newFile(local)->Directory();
        return directory.substr(0, directory.size() - 1);
    }

    class Checkout : public VSSCheckout {
      public:
        Checkout(std::string user, std::string folder) : mUser(std::move(user)), mFolder(std::move(folder)) {}
        std::string Username() const override { return mUser; }
        std::string LocalSpec() const override { return mFolder; }

      private:
        std::string mUser, mFolder;
    };

    class Checkouts : public VSSCheckouts {
      public:
        explicit Checkouts(const Entry& entry) : mEntry(entry) {}
        int Count() const override { return mEntry.user.empty() ? 0 : 1; }
        Ref<VSSCheckout> Item(int) const override { return make<Checkout>(mEntry.user, mEntry.folder); }

      private:
        Entry mEntry;
    };

    class Item : public VSSItem {
      public:
        Item(Owner owner, std::string spec) : mOwner(std::move(owner)), mSpec(std::move(spec)) {}
        std::string Spec() const override { return mSpec == "$" ? "$/" : mSpec; }
        std::string Name() const override { return mSpec.substr(mSpec.rfind('/') + 1); }
        int Type() const override { return entry().isFolder ? VSSITEM_PROJECT : VSSITEM_FILE; }
        void SetDeleted(bool) override {
            mOwner->record("Delete", mSpec);
            mOwner->entries.erase(mSpec);
        }
        int IsCheckedOut() override {
            const auto& user = entry().user;
            return user.empty()         ? VSSFILE_NOTCHECKEDOUT
                   : user == mOwner->me ? VSSFILE_CHECKEDOUT_ME
                                        : VSSFILE_CHECKEDOUT;
        }
        Ref<VSSCheckouts> Checkouts() override { return make<FakeSourceSafe::Checkouts>(entry()); }
        bool IsDifferent(const std::string& local) override { return textOf(local) != entry().text; }
        void Get(const std::string& local, int) override {
            mOwner->record("Get", mSpec);
            write(local, entry().text);
        }
        void Checkout(const std::string& comment, const std::string& local, int) override {
            mOwner->record("Checkout", mSpec + " '" + comment + "'");
            entry().user = mOwner->me;
            entry().folder = folderOf(local);
        }
        void Checkin(const std::string& comment, const std::string& local, int flags) override {
            mOwner->record("Checkin",
                           mSpec + " '" + comment + "'" + (flags == VSSFLAG_KEEPYES ? " keep" : ""));
            entry().text = textOf(local);
            if (flags != VSSFLAG_KEEPYES) entry().user.clear();
        }
        void UndoCheckout(const std::string& local, int) override {
            mOwner->record("UndoCheckout", mSpec);
            if (entry().user != mOwner->me) throw AutomationError("not checked out", 5);
            entry().user.clear();
            write(local, entry().text);
        }
        Ref<VSSItem> Add(const std::string& local, const std::string& comment, int flags) override {
            const auto spec = mSpec + "/" + newFile(local)->FileName();
            mOwner->record("Add", spec + " '" + comment + "'" + (flags == VSSFLAG_KEEPYES ? " keep" : ""));
            mOwner->entries[spec] = {.text = textOf(local)};
            if (flags == VSSFLAG_KEEPYES) {
                mOwner->entries[spec].user = mOwner->me;
                mOwner->entries[spec].folder = folderOf(local);
            }
            return make<Item>(mOwner, spec);
        }
        Ref<VSSItem> NewSubproject(const std::string& name, const std::string& comment) override {
            const auto spec = mSpec + "/" + name;
            mOwner->record("NewSubproject", spec + " '" + comment + "'");
            mOwner->PutFolder(spec);
            return make<Item>(mOwner, spec);
        }

      private:
        Entry& entry() const { return mOwner->At(mSpec); }
        Owner mOwner;
        std::string mSpec;
    };

    class Database : public VSSDatabase {
      public:
        explicit Database(Owner owner) : mOwner(std::move(owner)) {}
        void Open(const std::string& ini, const std::string& user, const std::string& password) override {
            mOwner->calls.push_back("Open '" + ini + "' '" + user + "' '" + password + "'");
            if (mOwner->refusesLogin) throw AutomationError("The login failed");
        }
        Ref<quillbox::VSSItem> VSSItem(const std::string& spec, bool) override {
            mOwner->At(spec);
            return make<Item>(mOwner, place(spec));
        }

      private:
        Owner mOwner;
    };
};

}  // namespace quillbox
