#pragma once

#include <string>

#include "base/Object.h"

namespace quillbox {

inline constexpr int VSSITEM_PROJECT = 0;
inline constexpr int VSSITEM_FILE = 1;
inline constexpr int VSSFILE_NOTCHECKEDOUT = 0;
inline constexpr int VSSFILE_CHECKEDOUT = 1;
inline constexpr int VSSFILE_CHECKEDOUT_ME = 2;
inline constexpr int VSSFLAG_KEEPNO = 0x10000;
inline constexpr int VSSFLAG_KEEPYES = 0x20000;

class VSSCheckout : public Object {
  public:
    static constexpr std::string_view kClassName = "VSSCheckout";
    std::string_view ClassName() const override { return kClassName; }
    virtual std::string Username() const = 0;
    // The folder that the item is checked out to, without a final separator.
    virtual std::string LocalSpec() const = 0;
};

class VSSCheckouts : public Object {
  public:
    static constexpr std::string_view kClassName = "VSSCheckouts";
    std::string_view ClassName() const override { return kClassName; }
    virtual int Count() const = 0;
    virtual Ref<VSSCheckout> Item(int index) const = 0;
};

// A file or a folder of the database. Specs are accepted with "\" and with "/".
class VSSItem : public Object {
  public:
    static constexpr std::string_view kClassName = "VSSItem";
    std::string_view ClassName() const override { return kClassName; }
    virtual std::string Spec() const = 0;
    virtual std::string Name() const = 0;
    virtual int Type() const = 0;
    virtual void SetDeleted(bool deleted) = 0;
    virtual int IsCheckedOut() = 0;
    virtual Ref<VSSCheckouts> Checkouts() = 0;
    virtual bool IsDifferent(const std::string& local) = 0;
    virtual void Get(const std::string& local, int flags) = 0;
    virtual void Checkout(const std::string& comment, const std::string& local, int flags) = 0;
    virtual void Checkin(const std::string& comment, const std::string& local, int flags) = 0;
    virtual void UndoCheckout(const std::string& local, int flags) = 0;
    virtual Ref<VSSItem> Add(const std::string& local, const std::string& comment, int flags) = 0;
    virtual Ref<VSSItem> NewSubproject(const std::string& name, const std::string& comment) = 0;
};

class VSSDatabase : public Object {
  public:
    static constexpr std::string_view kClassName = "VSSDatabase";
    std::string_view ClassName() const override { return kClassName; }
    // An empty ini means the default database.
    virtual void Open(const std::string& srcSafeIni, const std::string& user,
                      const std::string& password) = 0;
    // Fails for an unknown spec.
    virtual Ref<quillbox::VSSItem> VSSItem(const std::string& spec, bool deleted) = 0;
};

class SourceSafeClient {
  public:
    virtual ~SourceSafeClient() = default;
    // A session that is not open yet; none where the client is not installed.
    virtual Ref<VSSDatabase> NewDatabase() = 0;
};

}  // namespace quillbox
