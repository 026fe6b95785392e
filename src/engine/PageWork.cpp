#include "engine/PageWork.h"

#include <system_error>
#include <utility>

namespace quillbox {

namespace {

// Waking the other thread costs as much as a page does.
constexpr std::size_t kMostPages = 64;
constexpr std::size_t kMostBytes = std::size_t{1} << 20;

void forgetIfLarge(std::string& text) {
    if (text.capacity() > kMostBytes) text = {};
}

}  // namespace

PageWork::~PageWork() {
    try {
        Settle();
    } catch (...) {
        // The failure that ends the build is under way, or was told before.
        wait();
        noteWritten(mFilling, 0, mFilling.count);
    }
    if (!mThread.joinable()) return;
    {
        const std::lock_guard lock(mMutex);
        mIsOver = true;
    }
    mChanged.notify_all();
    mThread.join();
}

FinishedPage& PageWork::Next() {
    if (mFilling.count == mFilling.pages.size()) mFilling.pages.emplace_back();
    return mFilling.pages[mFilling.count];
}

void PageWork::Add() {
    const auto& page = mFilling.pages[mFilling.count];
    mOutput.PrepareFolderOf(page.name);
    mFilling.bytes += page.html.size();
    if (++mFilling.count == kMostPages || mFilling.bytes >= kMostBytes) handOver();
}

void PageWork::Settle() {
    finishOthers();
    work(mFilling);
}

void PageWork::handOver() {
    finishOthers();
    if (!mThread.joinable() && !startThread()) return work(mFilling);
    {
        const std::lock_guard lock(mMutex);
        std::swap(mFilling, mWorking);
        mIsWorking = true;
    }
    mChanged.notify_all();
}

// False where the system gives no thread.
bool PageWork::startThread() {
    try {
        mThread = std::thread([this] { run(); });
        return true;
    } catch (const std::system_error&) {
        return false;
    }
}

// Writes pages as long as the other thread is at work, but for those whose encoding has something to tell:
// that goes by the order of the pages.
void PageWork::help() {
    for (std::size_t at = 0; at < mFilling.count && isAtWork(); ++at) {
        auto& page = mFilling.pages[at];
        if (!page.written && isAsItStands(page.html, page.encoding))
            page.written = mOutput.Put(page.name, page.html);
    }
}

bool PageWork::isAtWork() {
    const std::lock_guard lock(mMutex);
    return mIsWorking;
}

void PageWork::wait() {
    std::unique_lock lock(mMutex);
    mChanged.wait(lock, [this] { return !mIsWorking; });
}

void PageWork::finishOthers() {
    help();
    wait();
    if (mFailure) std::rethrow_exception(mFailure);
}

void PageWork::run() {
    std::unique_lock lock(mMutex);
    for (;;) {
        mChanged.wait(lock, [this] { return mIsWorking || mIsOver; });
        if (!mIsWorking) return;
        lock.unlock();
        std::exception_ptr failure;
        try {
            work(mWorking);
        } catch (...) {
            failure = std::current_exception();
        }
        lock.lock();
        mIsWorking = false;
        mFailure = std::move(failure);
        mChanged.notify_all();
    }
}

// A page that fails is the last of its batch.
void PageWork::work(Batch& batch) {
    const auto count = std::exchange(batch.count, 0);
    batch.bytes = 0;
    std::size_t at = 0;
    try {
        for (; at < count; ++at) {
            auto& page = batch.pages[at];
            if (!page.written) page.written = put(page);
            noteWritten(batch, at, at + 1);
            mFiles.ScanPage(page.name, page.html);
            if (page.isSearched && mIndex) mIndex->Add(page.name, page.html);
            forgetIfLarge(page.html);
        }
    } catch (...) {
        noteWritten(batch, at, count);
        throw;
    }
}

WrittenFile PageWork::put(const FinishedPage& page) {
    if (isAsItStands(page.html, page.encoding)) return mOutput.Put(page.name, page.html);
    return mOutput.Put(page.name,
                       encode(page.name, page.html, page.encoding, *page.language, page.raw, mNotes));
}

void PageWork::noteWritten(Batch& batch, std::size_t from, std::size_t to) {
    for (; from < to; ++from) {
        auto& written = batch.pages[from].written;
        if (written) mOutput.Note(*std::exchange(written, std::nullopt));
    }
}

}  // namespace quillbox
