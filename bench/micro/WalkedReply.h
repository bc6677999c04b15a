// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

// The floor under the decoders: the least that a program must do to take a reply apart safely. Each field is looked for
// inside the reply and copied, once, into a field of fixed size; the integers that the assistant asks for are put
// together; an unknown record is passed over. No texts are made and no code is mapped.
//
// The object holds what the decoder's holds, in arrays where fields are alike, and is therefore about as large.

constexpr unsigned long TextCount = 5; ///< vendor, product, serial number, firmware version, extra information
constexpr unsigned long SupplyCount = 9; ///< the supplies records that hold an integer, ascending by type

struct WalkedReply
{
    unsigned char head[3][3];
    unsigned char rawLength[TextCount][3];
    char text[TextCount][256];
    unsigned long length[TextCount];
    unsigned char reserved[4][3];
    unsigned char rawStatus[2];
    unsigned long status;
    unsigned char rawCodeCount[2][2]; ///< errors, warnings
    unsigned char rawCode[2][3];
    unsigned long codeCount[2];
    unsigned char rawSupplyCount[2];
    unsigned long supplyCount;
    char supplySerialNumber[65];
    unsigned char rawSupply[SupplyCount][5];
    unsigned long supply[SupplyCount];
};

/// The raw codes of one kind in a plain array, which needs no heap.
struct CodeArray
{
    unsigned long codes[255];
    unsigned long count = 0;

    void reserve(unsigned long /*expected*/) { }
    void push_back(unsigned long code)
    {
        codes[count++] = code;
    }
};

/// "walk": into an object that is neither zeroed nor allocates; used again for each reply.
struct Walk
{
    WalkedReply reply;
    CodeArray codes[2];
};
bool WalkStandardReply(Walk& walk, const unsigned char* buffer, unsigned long length);
bool WalkQZReply(Walk& walk, const unsigned char* buffer, unsigned long length);

/// "walk + zero + vectors": into an object that was zeroed, with the codes in vectors; one a reply.
struct WalkZeroVectors
{
    WalkedReply reply = {};
    std::vector<unsigned long> codes[2];
};
bool WalkStandardReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length);
bool WalkQZReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length);
