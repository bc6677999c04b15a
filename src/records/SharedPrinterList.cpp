// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#include "SharedPrinterList.h"

#include <algorithm>
#include <map>
#include <mutex>
#include <set>
#include <tuple>
#include <utility>

namespace {

// A print queue as the workers of one index know it.
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

// The last write-back to an index: which printer it was, and the count then.
struct LastWrite
{
    QString name;
    QString uri;
    unsigned long count = 0;
};

struct Book
{
    std::mutex mutex; // a standard mutex, which, unlike Qt's, thread sanitizers see through
    unsigned long writeCount = 0;
    std::map<std::pair<const QList<stPrinterManager>*, int>, LastWrite> lastWrites;
    // Where the list has shrunk and grown again a printer has several workers, all of which see it start cancelling:
    // while one runs the command, the others must not take the next job as well.
    std::set<QueuePlace> cancelling;
};

// Never deleted: a command may last longer than main().
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

// A list that was replaced by an equal one in between does not count: nobody has written to it.
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

// Record by record. A copy of the list would share its elements until a worker writes one: read without the lock by
// whoever has the copy, written under it, and the worker would first copy them all.
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
    // Declared before the lock: the old list is freed after the lock is released.
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

// Compared and written under one lock: a rebuild in between would reset the row with no signal to follow. The start of
// a cancellation counts as a write: what other workers have read before it is older. What they read during the command
// is taken when it shows that the printer has gone on; all else would make the cancelling state start a second time.
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

// The command may take long: the list may be another by its end, or let go.
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
