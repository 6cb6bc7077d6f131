#pragma once

#include "runtime/Ref.h"

class clsFaktura;

/// The component's load-time routine: makes the private instance of clsFaktura and fills the shared
/// state. It runs once, before any instance reaches the parent.
void Main();

/// What Main does with the instance that it has made: keeps it as the private one, points the
/// settings store, tells of an instance that is not ready, and sets the VAT rates.
void TaImot(const Ref<clsFaktura> &instans);

/// The end of the component: takes its windows down, closes what the module has open and forgets
/// all shared state, so that a later load begins anew.
void Unload();
