#pragma once

/// The component's load-time routine: makes the private instance of clsFaktura and fills the shared
/// state. It runs once, before any instance reaches the parent.
void Main();

/// The end of the component: takes its windows down, closes what the module has open and forgets
/// all shared state, so that a later load begins anew.
void Unload();
