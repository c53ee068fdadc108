#include "expr/words/builtin_words.h"

#include "expr/words/evaluation_procedures.h"

namespace tarnwick {
namespace {

using enum WordClass;
constexpr Notation kOper = Notation::Operator;
constexpr Notation kFunc = Notation::Function;

constexpr BuiltinWord kWords[] = {
    {"(", LeftBracket, kFunc, 0, 0, nullptr, "opens a bracket"},
    {")", RightBracket, kFunc, 0, 0, nullptr, "closes a bracket"},
    {",", WordClass::Comma, kFunc, 0, 0, nullptr, "separates arguments"},
    {"pi", Function, kFunc, 0, 0, &Pi, "3.141592653589793"},
    {"random", RandomFunction, kFunc, 0, 0, &NextRandom, "a random number from 0 up to 1"},
    {"!", Function, kOper, 10, 1, &Factorial, "a!: factorial of a rounded"},
    {"%", Function, kOper, 10, 1, &Percent, "a%: a * 0.01"},
    {"-@", Function, kOper, 10, 1, &Negate, "-a: the sign minus (typed as -)"},
    {"+@", Function, kOper, 10, 1, &Identity, "+a: the sign plus (typed as +)"},
    {"^", Function, kOper, 20, 2, &Power, "a^b: a to the power b"},
    {"^@", Function, kOper, 20, 2, &IntPower, "a^n: a to a whole power (typed as ^)"},
    {"*", Function, kOper, 30, 2, &Multiply, "a * b"},
    {"/", Function, kOper, 30, 2, &Divide, "a / b, undefined when b = 0"},
    {"div", Function, kOper, 30, 2, &IntegerDivide,
     "quotient of a and b rounded, without fraction"},
    {"mod", Function, kOper, 30, 2, &Modulo, "remainder of a div b, with the sign of a"},
    {"+", Function, kOper, 40, 2, &Add, "a + b"},
    {"-", Function, kOper, 40, 2, &Subtract, "a - b"},
    {">", BooleanFunction, kOper, 50, 2, &Greater, "1 when a > b, else 0"},
    {">=", BooleanFunction, kOper, 50, 2, &GreaterOrEqual, "1 when a + 1e-20 >= b, else 0"},
    {"<=", BooleanFunction, kOper, 50, 2, &LessOrEqual, "1 when b + 1e-20 >= a, else 0"},
    {"<", BooleanFunction, kOper, 50, 2, &Less, "1 when a <= b, else 0 (equal counts as less)"},
    {"<>", BooleanFunction, kOper, 50, 2, &Unequal, "1 when a and b differ by more than 1e-30"},
    {"=", BooleanFunction, kOper, 50, 2, &Equal, "1 when a and b differ by less than 1e-30"},
    {"not", BooleanFunction, kOper, 60, 1, &Not, "low byte of a rounded, its last bit inverted"},
    {"or", BooleanFunction, kOper, 70, 2, &Or, "1 when the low byte of a or b rounded is not 0"},
    {"and", BooleanFunction, kOper, 70, 2, &And, "1 when neither low byte of a and b is 0"},
    {"xor", BooleanFunction, kOper, 70, 2, &Xor, "low bytes of a and b rounded, exclusive or"},
    {":=", Function, kOper, 200, 2, &Assign, "a := b: stores b in a"},
    {"exp", Function, kFunc, 0, 1, &Exp, "e to the power a, undefined from 709.75"},
    {"sqr", Function, kFunc, 0, 1, &Square, "a * a"},
    {"sqrt", Function, kFunc, 0, 1, &SquareRoot, "square root, undefined below 0"},
    {"abs", Function, kFunc, 0, 1, &Absolute, "absolute value"},
    {"round", Function, kFunc, 0, 1, &Round, "nearest whole number, ties to even"},
    {"trunc", Function, kFunc, 0, 1, &Truncate, "a without its fraction"},
    {"ln", Function, kFunc, 0, 1, &Ln, "natural logarithm, undefined up to 0"},
    {"log10", Function, kFunc, 0, 1, &Log10, "decimal logarithm, undefined up to 0"},
    {"logN", Function, kFunc, 0, 2, &LogN, "logarithm of b to base a, undefined up to 0"},
    {"power", Function, kFunc, 0, 2, &Power, "a to the power b"},
    {"pow", Function, kFunc, 0, 2, &Power, "a to the power b"},
    {"intpower", Function, kFunc, 0, 2, &IntPower, "a to the power b rounded"},
    {"max", Function, kFunc, 0, 2, &Max, "the larger of a and b"},
    {"min", Function, kFunc, 0, 2, &Min, "the smaller of a and b"},
    {"sin", Function, kFunc, 0, 1, &Sin, "sine of a in radians"},
    {"cos", Function, kFunc, 0, 1, &Cos, "cosine of a in radians"},
    {"tan", Function, kFunc, 0, 1, &Tan, "tangent of a in radians"},
    {"arcsin", Function, kFunc, 0, 1, &ArcSin, "angle whose sine is a"},
    {"arccos", Function, kFunc, 0, 1, &ArcCos, "angle whose cosine is a"},
    {"arctan2", Function, kFunc, 0, 2, &ArcTan2, "angle of the point (b, a): y is written first"},
    {"sinh", Function, kFunc, 0, 1, &Sinh, "hyperbolic sine"},
    {"cosh", Function, kFunc, 0, 1, &Cosh, "hyperbolic cosine"},
    {"tanh", Function, kFunc, 0, 1, &Tanh, "hyperbolic tangent"},
    {"arcsinh", Function, kFunc, 0, 1, &ArcSinh, "inverse hyperbolic sine"},
    {"arccosh", Function, kFunc, 0, 1, &ArcCosh, "inverse hyperbolic cosine"},
    {"arctanh", Function, kFunc, 0, 1, &ArcTanh, "inverse hyperbolic tangent"},
    {"degtorad", Function, kFunc, 0, 1, &DegToRad, "degrees in radians"},
    {"radtodeg", Function, kFunc, 0, 1, &RadToDeg, "radians in degrees"},
};

}  // namespace

const char* BuiltinWord::Kind() const {
  switch (word_class) {
    case LeftBracket:
    case RightBracket:
      return "bracket";
    case WordClass::Comma:
      return "comma";
    default:
      return notation == kOper ? "operator" : "function";
  }
}

std::span<const BuiltinWord> BuiltinWords() {
  return kWords;
}

std::unique_ptr<TExprWord> MakeWord(const BuiltinWord& word) {
  switch (word.word_class) {
    case LeftBracket:
      return std::make_unique<TLeftBracket>();
    case RightBracket:
      return std::make_unique<TRightBracket>();
    case WordClass::Comma:
      return std::make_unique<TComma>();
    case BooleanFunction:
      return std::make_unique<TBooleanFunction>(word.name, word.priority, word.notation,
                                                word.n_args, word.func);
    case RandomFunction:
      return std::make_unique<TRandomFunction>(word.name);
    case AddedFunction:
      return std::make_unique<TAddedFunction>(word.name, word.priority, word.notation, word.n_args,
                                              word.func);
    case Function:
      break;
  }
  return std::make_unique<TFunction>(word.name, word.priority, word.notation, word.n_args,
                                     word.func);
}

}  // namespace tarnwick
