// The cable tools: the smallest standard cross-section within a voltage-drop
// limit, the voltage drop of a chosen cable against the limits of table
// G.52.1, and the largest and smallest short-circuit currents at a board.
// Each is one pure function of the form's texts; its page declares the form.
#pragma once

#include "fl/tools/frame.h"

namespace fl {

// Form keys U, I or P (with cosphi), Lk, dUpmax. `rho` in Ω·mm²/m.
ToolOut dimensionCable(const FormMap& form, bool threePhase, double rho);

// Form keys U_F (1-phase) or U_N (3-phase), I_B, sf, uf, cosphi, l, R_l, X_l.
ToolOut voltageDrop(const FormMap& form, bool threePhase);

// Form keys U_N, Ik_fr, cosphi_k, l, R_l, X_l. Three-phase, one conductor, cold.
ToolOut shortCircuitMax(const FormMap& form);

// Form keys U_F, I_Nks, k_fr, k_v, l_stik, R_lstik, l_grp, R_lgrp, and for
// the check I_Ngrp with k_a (5, 10 or 20 by the breaker's characteristic).
// Single-phase, phase and neutral in series, hot.
ToolOut shortCircuitMin(const FormMap& form);

} // namespace fl
