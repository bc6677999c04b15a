// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include "records/PrinterRecords.h"

#include <functional>

/// Returns whether two states differ in what users see: status, remaining toner, errors or warnings.
bool DifferForUsers(const stPrinterState& a, const stPrinterState& b);

/// The shared list: the `QList<stPrinterManager>` that the window owns, the device manager replaces and each status
/// worker reads and writes at its own index.
///
/// Each user has its own object, a handle on the same list. One lock guards all lists and handles. A thread holds it
/// only to copy, compare, replace or write records, never while it works with files or processes. The lock is never
/// destroyed: a worker that was left running may use its handle while static objects are being destroyed.
class SharedPrinterList
{
public:
    /// The place and time of a copy; needed to write the record back.
    struct Origin
    {
        const QList<stPrinterManager>* list = nullptr;
        int index = -1;
        unsigned long writeCount = 0; ///< number of write-backs to all lists before the copy
    };

    enum class WriteBack
    {
        NotListed, ///< dropped: the handle let go of the list, or another printer is at the index
        Overtaken, ///< dropped: another worker has written there since the copy, or is cancelling a job of the printer
        Unchanged, ///< written; DifferForUsers() is false
        Changed, ///< written
        CancelFirst ///< not written yet: cancel the job, then call writeBackCancelled()
    };

    SharedPrinterList() = default;
    /// The caller owns `list`, which must outlive the handle or its next assign().
    explicit SharedPrinterList(QList<stPrinterManager>* list);

    /// Changes to another list, or to none if `list` is null. When this returns, the handle does not touch the old list
    /// any more. May be called while another thread uses the handle.
    void assign(QList<stPrinterManager>* list);

    /// Returns the infos of all records, in order; none without a list.
    QList<stPrinterInfo> copyInfos() const;
    /// Copies one record. Returns false and leaves `printer` and `origin` unchanged if there is no such index.
    bool copy(int index, stPrinterManager& printer, Origin* origin = nullptr) const;

    /// Replaces the list by `makeList()` unless it has the same printers, by name and port and in the same order.
    /// Returns whether it did. Both functions run with the lock held and must not use a handle. `tell` runs before any
    /// other thread can see the new list.
    bool replaceIfChanged(const QList<stPrinterInfo>& printers,
                          const std::function<QList<stPrinterManager>()>& makeList, const std::function<void()>& tell);

    /// Writes a copied record back to its origin if the list still has the same printer there, by name and URI. If
    /// several workers hold a copy at the same time, only the first write-back succeeds; the others are Overtaken.
    /// `isEvaluated` says that the state comes from the printer's reply and not from the copy. Updates `origin`.
    WriteBack writeBack(const stPrinterManager& printer, bool isEvaluated, Origin& origin);
    /// Writes the record back after CancelFirst, with the same arguments; never returns CancelFirst.
    WriteBack writeBackCancelled(const stPrinterManager& printer, const Origin& origin);

private:
    QList<stPrinterManager>* m_list = nullptr; ///< not owned; guarded by the lock
};
