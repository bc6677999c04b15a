// SPDX-FileCopyrightText: 2026 Tolmar printer assistant developers
// SPDX-License-Identifier: MIT

#pragma once

#include <vector>

// The floor of the decoders: the least work that takes a reply apart safely. The walk finds each field, copies it once
// into a field of fixed size, assembles the integers that the assistant uses, and skips unknown records. It creates no
// texts and maps no codes.
//
// The object has the fields of the decoder's object, with arrays for similar fields, so it is about as large.

constexpr unsigned long TextCount = 5; ///< vendor, product, serial number, firmware version, extra information
constexpr unsigned long SupplyCount = 9; ///< supplies records with an integer, ascending by type

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

/// The raw codes of one kind in a plain array without heap memory.
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

/// "walk": the object is used again for each reply; nothing is zeroed or allocated.
struct Walk
{
    WalkedReply reply;
    CodeArray codes[2];
};
bool WalkStandardReply(Walk& walk, const unsigned char* buffer, unsigned long length);
bool WalkQZReply(Walk& walk, const unsigned char* buffer, unsigned long length);

/// "walk + zero + vectors": each reply gets a new, zeroed object with the codes in vectors.
struct WalkZeroVectors
{
    WalkedReply reply = {};
    std::vector<unsigned long> codes[2];
};
bool WalkStandardReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length);
bool WalkQZReply(WalkZeroVectors& walk, const unsigned char* buffer, unsigned long length);
