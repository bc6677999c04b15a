// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "records/SharedPrinterList.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <tuple>
#include <utility>

namespace {

// The key of the book of cancelling: a print queue at one index of a list.
struct QueuePlace
{
    const QList<stPrinterManager>* list;
    int index;
    QString name;

    bool operator<(const QueuePlace& other) const
    {
        return std::tie(list, index, name) < std::tie(other.list, other.index, other.name);
    }
};

// The printer of the last write-back to an index, and the number of write-backs by then.
struct LastWrite
{
    QString name;
    QString uri;
    unsigned long count = 0;
};

struct Book
{
    std::mutex mutex; // not a QMutex, which the thread sanitizer does not understand
    unsigned long writeCount = 0;
    std::map<std::pair<const QList<stPrinterManager>*, int>, LastWrite> lastWrites;
    // When a list has shrunk and grown again, several workers watch one printer and see it start cancelling. While one
    // of them runs the command, the others must not cancel the next job as well.
    std::set<QueuePlace> cancelling;
};

// Never deleted: a worker's command may outlast main().
Book& TheBook()
{
    static auto* const s_book = new Book;
    return *s_book;
}

bool HasSamePrinters(const QList<stPrinterManager>& list, const QList<stPrinterInfo>& printers)
{
    return std::equal(list.begin(), list.end(), printers.begin(), printers.end(),
                      [](const stPrinterManager& listed, const stPrinterInfo& printer) {
                          return listed.stInfo.strPrinterName == printer.strPrinterName &&
                              listed.stInfo.strPort == printer.strPort;
                      });
}

bool IsStillListed(const QList<stPrinterManager>* list, const stPrinterInfo& printer,
                   const SharedPrinterList::Origin& origin)
{
    if (list == nullptr || list != origin.list || origin.index < 0 || origin.index >= list->size()) {
        return false;
    }
    const stPrinterInfo& listed = list->at(origin.index).stInfo;
    return listed.strPrinterName == printer.strPrinterName && listed.strURI == printer.strURI;
}

// Replacing the list by an equal one does not count as a write.
bool IsWrittenSince(const LastWrite& last, const stPrinterInfo& printer, const SharedPrinterList::Origin& origin)
{
    return last.count > origin.writeCount && last.name == printer.strPrinterName && last.uri == printer.strURI;
}

} // namespace

bool DifferForUsers(const stPrinterState& a, const stPrinterState& b)
{
    return a.enCurrentStatus != b.enCurrentStatus || a.dwRemainingToner != b.dwRemainingToner ||
        a.listError != b.listError || a.listWarning != b.listWarning;
}

SharedPrinterList::SharedPrinterList(QList<stPrinterManager>* list)
    : m_list(list)
{
}

void SharedPrinterList::assign(QList<stPrinterManager>* list)
{
    const std::lock_guard<std::mutex> lock(TheBook().mutex);
    m_list = list;
}

// Copies record by record. A copy of the QList would share its elements with the list: they would be read without the
// lock, and the next worker that writes one would first copy them all.
QList<stPrinterInfo> SharedPrinterList::copyInfos() const
{
    QList<stPrinterInfo> printers;
    const std::lock_guard<std::mutex> lock(TheBook().mutex);
    if (m_list != nullptr) {
        printers.reserve(m_list->size());
        for (const stPrinterManager& printer : qAsConst(*m_list)) {
            printers.append(printer.stInfo);
        }
    }
    return printers;
}

bool SharedPrinterList::copy(int index, stPrinterManager& printer, Origin* origin) const
{
    Book& book = TheBook();
    const std::lock_guard<std::mutex> lock(book.mutex);
    if (m_list == nullptr || index < 0 || index >= m_list->size()) {
        return false;
    }
    printer = m_list->at(index);
    if (origin != nullptr) {
        *origin = {m_list, index, book.writeCount};
    }
    return true;
}

bool SharedPrinterList::replaceIfChanged(const QList<stPrinterInfo>& printers,
                                         const std::function<QList<stPrinterManager>()>& makeList,
                                         const std::function<void()>& tell)
{
    // Declared before the lock, so that the old list is freed after the lock is released.
    QList<stPrinterManager> list;
    const std::lock_guard<std::mutex> lock(TheBook().mutex);
    if (m_list == nullptr || HasSamePrinters(*m_list, printers)) {
        return false;
    }
    list = makeList();
    m_list->swap(list);
    tell();
    return true;
}

// One lock covers comparison and write: if the list were replaced between them, the row would be reset without a
// signal. The start of a cancellation counts as a write, because what other workers have read before is older. While
// the command runs, a result is taken only if it is evaluated and shows another status; any other would make the
// cancelling status start a second time.
SharedPrinterList::WriteBack SharedPrinterList::writeBack(const stPrinterManager& printer, bool isEvaluated,
                                                          Origin& origin)
{
    Book& book = TheBook();
    const std::lock_guard<std::mutex> lock(book.mutex);
    if (!IsStillListed(m_list, printer.stInfo, origin)) {
        return WriteBack::NotListed;
    }
    LastWrite& last = book.lastWrites[{m_list, origin.index}];
    if (IsWrittenSince(last, printer.stInfo, origin)) {
        return WriteBack::Overtaken;
    }
    const stPrinterState& listed = m_list->at(origin.index).stState;
    const bool hasChanged = DifferForUsers(printer.stState, listed);
    const bool isCancelling = printer.stState.enCurrentStatus == PS_CANCELING_JOB;
    const bool startsCancelling = isCancelling && listed.enCurrentStatus != PS_CANCELING_JOB;
    if (!book.cancelling.empty() && (isCancelling || !isEvaluated) &&
        book.cancelling.count({m_list, origin.index, printer.stInfo.strPrinterName}) > 0) {
        return WriteBack::Overtaken;
    }
    origin.writeCount = ++book.writeCount;
    last = {printer.stInfo.strPrinterName, printer.stInfo.strURI, origin.writeCount};
    if (startsCancelling) {
        book.cancelling.insert({m_list, origin.index, printer.stInfo.strPrinterName});
        return WriteBack::CancelFirst;
    }
    (*m_list)[origin.index] = printer;
    return hasChanged ? WriteBack::Changed : WriteBack::Unchanged;
}

// The command may take long. By its end the list may have been replaced or let go.
SharedPrinterList::WriteBack SharedPrinterList::writeBackCancelled(const stPrinterManager& printer,
                                                                   const Origin& origin)
{
    Book& book = TheBook();
    const std::lock_guard<std::mutex> lock(book.mutex);
    book.cancelling.erase({origin.list, origin.index, printer.stInfo.strPrinterName});
    if (!IsStillListed(m_list, printer.stInfo, origin)) {
        return WriteBack::NotListed;
    }
    LastWrite& last = book.lastWrites[{m_list, origin.index}];
    if (IsWrittenSince(last, printer.stInfo, origin)) {
        return WriteBack::Overtaken;
    }
    last = {printer.stInfo.strPrinterName, printer.stInfo.strURI, ++book.writeCount};
    (*m_list)[origin.index] = printer;
    return WriteBack::Changed;
}
