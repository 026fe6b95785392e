#pragma once

#include "build/QbDataProvider.h"

namespace quillbox {

// Lives while a list is written, and holds the provider for its items. Providers are made for the first lists
// and serve those that come after.
class ListProvider {
  public:
    explicit ListProvider(const QbDataProvider& owner)
        : mMemory(owner.Memory()), mProvider(mMemory.TakeResting()) {
        if (mProvider) {
            mProvider->Serve(owner);
        } else {
            mProvider = owner.ForList();
        }
    }
    ~ListProvider() {
        if (mProvider.use_count() > 1) return;
        ignoringFailures([&] {
            mProvider->Rest();
            mMemory.KeepResting(std::move(mProvider));
        });
    }
    ListProvider(const ListProvider&) = delete;
    ListProvider& operator=(const ListProvider&) = delete;

    QbDataProvider* operator->() const { return mProvider.get(); }

  private:
    ProviderMemory& mMemory;
    Ref<QbDataProvider> mProvider;
};

}  // namespace quillbox
