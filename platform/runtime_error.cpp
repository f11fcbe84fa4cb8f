#include "platform/runtime_error.h"

#include <utility>

namespace quorvel {

RuntimeError::RuntimeError(int number, Text description)
    : number_(number), description_(std::move(description)), utf8_(ToUtf8(description_)) {}

RuntimeError InvalidCall() {
  return {5, u"Invalid procedure call or argument"};
}

RuntimeError Overflow() {
  return {6, u"Overflow"};
}

RuntimeError SubscriptOutOfRange() {
  return {9, u"Subscript out of range"};
}

RuntimeError TypeMismatch() {
  return {13, u"Type mismatch"};
}

RuntimeError ObjectNotSet() {
  return {91, u"Object variable or With block variable not set"};
}

RuntimeError InvalidUseOfNull() {
  return {94, u"Invalid use of Null"};
}

}  // namespace quorvel
