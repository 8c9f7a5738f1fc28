#include "found/read_messenger.h"

namespace Found::Umo {

ReadMessenger::ReadMessenger() = default;

ReadMessenger::ReadMessenger(const ReadMessenger&) = default;

ReadMessenger& ReadMessenger::operator=(const ReadMessenger&) = default;

ReadMessenger::~ReadMessenger() = default;

}  // namespace Found::Umo
