// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "PrinterRecords.h"

#include <functional>

/// Whether two states differ in what users are told: status, remaining toner, errors and warnings.
bool DifferForUsers(const stPrinterState& a, const stPrinterState& b);

/// The shared printer list: the `QList<stPrinterManager>` that the window owns, the device manager replaces and each
/// status worker reads and writes at its own index.
///
/// Every user has an object of its own, a handle on the same list. One lock guards all lists and handles. It is held to
/// copy, compare, replace or write records, never during file or process work. Nothing here is ever destroyed: a worker
/// that was let go may come back while the program's static objects are being destroyed.
class SharedPrinterList
{
public:
    /// Where and when a record was copied; needed to write it back.
    struct Origin
    {
        const QList<stPrinterManager>* list = nullptr;
        int index = -1;
        unsigned long writeCount = 0; ///< write-backs to all lists before the copy
    };

    enum class WriteBack
    {
        NotListed, ///< dropped: the list was let go, or it has another printer at the index
        Overtaken, ///< dropped: another worker has written there since the copy, or is cancelling the printer's job
        Unchanged, ///< written; DifferForUsers() is false
        Changed, ///< written
        CancelFirst ///< not written yet: cancel the job, then call writeBackCancelled()
    };

    SharedPrinterList() = default;
    /// `list` stays the caller's and must outlive the handle or its next assign().
    explicit SharedPrinterList(QList<stPrinterManager>* list);

    /// Takes another list. With null, also while another thread uses the handle, lets go: when this returns, the old
    /// list is not touched any more.
    void assign(QList<stPrinterManager>* list);

    QList<stPrinterInfo> copyInfos() const;
    /// Returns false, and leaves `printer` and `origin` as they are, when there is no such index.
    bool copy(int index, stPrinterManager& printer, Origin* origin = nullptr) const;

    /// Replaces the list by `makeList()` unless it has the same printers, by name and port and in the same order;
    /// returns whether it did.
    /// `tell` is called before anybody else can see the new list, with the lock held.
    bool replaceIfChanged(const QList<stPrinterInfo>& printers,
                          const std::function<QList<stPrinterManager>()>& makeList, const std::function<void()>& tell);

    /// Writes a copied record back to where it came from, if that is still the same printer by name and URI. Workers
    /// that share an index cannot undo each other: of those that have the record at the same time one is Overtaken.
    /// `isEvaluated` says that the state comes from the printer's reply and not from the copy.
    WriteBack writeBack(const stPrinterManager& printer, bool isEvaluated, Origin& origin);
    /// The second half after CancelFirst, with the same arguments; never returns CancelFirst.
    WriteBack writeBackCancelled(const stPrinterManager& printer, const Origin& origin);

private:
    QList<stPrinterManager>* m_list = nullptr; ///< not owned
};
