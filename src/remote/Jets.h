#pragma once
// The jets of the head boards as the bench fires them: three chains, rows from 1. Link thread.

#include <QtGlobal>

constexpr int jetChains = 3;
constexpr int jetRows = 880;
/// Jets next to each other on a head are this many rows apart.
constexpr int jetColumns = 16;

/// Arms a jet for firing; what no head has is the library's to refuse.
void setJet(int chain, qint64 row, bool on);
/// Fires the armed jets of a chain `count` times; 0 goes on until they are stopped.
void startJets(int chain, float hertz, int count);
