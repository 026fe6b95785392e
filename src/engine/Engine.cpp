#include "engine/Engine.h"

#include "engine/EngineDocument.h"

namespace quillbox {

namespace {

class TemplateEngine : public DocumentEngine {
  public:
    explicit TemplateEngine(EngineServices services)
        : mShared(std::make_shared<EngineShared>(std::move(services))) {}

    Ref<Document> NewDocument() override { return make<EngineDocument>(mShared); }
    TemplateService& Templates() override { return mShared->templates; }

  private:
    std::shared_ptr<EngineShared> mShared;
};

}  // namespace

std::shared_ptr<DocumentEngine> makeDocumentEngine(EngineServices services) {
    return std::make_shared<TemplateEngine>(std::move(services));
}

}  // namespace quillbox
