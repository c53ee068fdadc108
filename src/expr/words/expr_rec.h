// One step of a compiled expression. Knows where its arguments lie; not who put them there.
#pragma once

#include <array>

namespace tarnwick {

class TExprWord;
struct TExprRec;

/// An evaluation procedure: reads its arguments through Args and writes Res.
using ExprFunc = void (*)(TExprRec&);

/// The most arguments that a word can take.
inline constexpr int kMaxArgs = 6;

struct TExprRec {
  ExprFunc Oper = nullptr;
  TExprRec* Next = nullptr;  ///< none at the end of the chain
  double Res = 0;
  TExprWord* Word = nullptr;                ///< where Oper came from
  std::array<double*, kMaxArgs> Args = {};  ///< other records' Res, or the storage of operands
};

}  // namespace tarnwick
