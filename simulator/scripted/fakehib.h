#pragma once
// What a test may tell the noting head library, and ask of it. Resolved by name from the loaded library.

extern "C" {
/// The calls since the last take, one a line, as "name(1,2.5)". Autofire masks are only counted. Norm values
/// are three a colour: -120, its number, 120.
const char *fakeHibTakeCalls();
/// The calls that set autofire masks since the last take of masks, as "chain:row=on " each.
const char *fakeHibTakeMasks();
/// The function named returns `code` from now on; 0 heals it.
void fakeHibFail(const char *function, int code);
/// Every head's waveform from now on, and the encoder's position.
void fakeHibSet(int knots, float peak, int encoder);
/// What the last transfer handed over: "width,height,count,150,dpi,forward,support,structure", of both waxes
/// the bytes of the first row one over the other.
const char *fakeHibPicture();
}
