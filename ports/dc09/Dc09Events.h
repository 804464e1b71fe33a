#pragma once

#include "ports/dc09/Dc09Body.h"
#include "ports/dc09/Dc09Frame.h"
#include "ports/formats/SiaDecoding.h"

namespace nordkeep {

/// The events of a message of kind SIA-DCS: those of its SIA blocks.
std::vector<DecodedEvent> Dc09SiaEvents(const Dc09Head& head, const Dc09Body& body,
                                        const SiaSettings& settings, OleDate now);
/// The event of a message of kind ADM-CID. What keeps to no form is an event all the same, marked as wrong.
DecodedEvent Dc09ContactIdEvent(const Dc09Head& head, const Dc09Body& body, const SiaSettings& settings,
                                OleDate now);

/// An event about the sender with this account, with a text for operators; no sign of life of it.
DecodedEvent Dc09Complaint(const Dc09Head& head, const Text& text, const SiaSettings& settings, OleDate now);
/// The event that an account has fallen silent, or has come again, as its own panel would report it: SIA YC
/// and YK, Contact ID 350 and its restore.
DecodedEvent Dc09Silence(const Text& account, Protocol protocol, bool isOver, const Text& text, OleDate now);
/// A link test of an account as the routine test report that it replaces.
IncomingEvent Dc09SignOfLife(const Text& account, Protocol protocol, OleDate now);

}  // namespace nordkeep
