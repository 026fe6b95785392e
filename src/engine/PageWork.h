#pragma once

#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "engine/LocalFiles.h"
#include "engine/OutputFolder.h"
#include "engine/PageEncoding.h"
#include "engine/SearchIndex.h"

namespace quillbox {

// A page whose text is done.
struct FinishedPage {
    std::string name;
    // In UTF-8.
    std::string html;
    // As it goes to the disk.
    PageEncoding encoding = PageEncoding::Utf8;
    const Language* language = nullptr;
    std::vector<RawRange> raw;
    bool isSearched = false;
    // Once it is on disk.
    std::optional<WrittenFile> written;
};

// What is to be done with finished pages, beside the making of the next: they are put on disk, and it is read
// what they refer to and which words they hold. Where the disk is slower than the making, who adds pages
// helps with writing them. While pages are at work, the folder's writing and the other lists that are filled
// are not to be touched.
class PageWork {
  public:
    // Words are not gathered without an index.
    PageWork(OutputFolder& output, EncodingNotes& notes, LocalFiles& files, SearchIndex* index)
        : mOutput(output), mNotes(notes), mFiles(files), mIndex(index) {}
    // What was added before a failure is put on disk as far as it goes, and all that is on disk is noted.
    ~PageWork();
    PageWork(const PageWork&) = delete;
    PageWork& operator=(const PageWork&) = delete;

    // The place of the next page, with the room of an old one, to be filled before it is added.
    FinishedPage& Next();
    // Adds it. Fails with what went wrong with a page that was added before; from then on nothing is done.
    void Add();
    // Returns when all that was added is done. Fails likewise.
    void Settle();

  private:
    struct Batch {
        std::vector<FinishedPage> pages;
        std::size_t count = 0, bytes = 0;
    };

    void handOver();
    bool startThread();
    // Returns when the batch before is done. Fails likewise.
    void finishOthers();
    void help();
    void wait();
    bool isAtWork();
    void run();
    void work(Batch& batch);
    WrittenFile put(const FinishedPage& page);
    void noteWritten(Batch& batch, std::size_t from, std::size_t to);

    OutputFolder& mOutput;
    EncodingNotes& mNotes;
    LocalFiles& mFiles;
    SearchIndex* mIndex;
    // One is filled while the other is at work.
    Batch mFilling, mWorking;
    std::thread mThread;
    std::mutex mMutex;
    std::condition_variable mChanged;
    // Of both threads.
    bool mIsWorking = false, mIsOver = false;
    std::exception_ptr mFailure;
};

}  // namespace quillbox
