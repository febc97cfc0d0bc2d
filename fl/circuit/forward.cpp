// The forward pass over a compiled plan: impedances bottom-up, then voltages
// and currents top-down, with the source voltage as the phase reference.
// The plan lists the tree in pre-order, so both passes are plain loops.
#include "fl/circuit/forward.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace fl {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = 6.283185307179586 / 2;
constexpr double kDeg = 0.017453292519943295; // π/180

// |c| without hypot's cost; hypot only where the squares would over- or underflow.
inline double mag(Cx c) {
    const double m = std::sqrt(c.real() * c.real() + c.imag() * c.imag());
    return m > 1e-150 && m < 1e150 ? m : std::hypot(c.real(), c.imag());
}

// The plain product: infinities only ever mean "not computed" here, so the
// library's recovery of them is not worth its call.
inline Cx cmul(Cx a, Cx b) {
    return {a.real() * b.real() - a.imag() * b.imag(), a.real() * b.imag() + a.imag() * b.real()};
}

int addSlot(std::vector<std::string>& names, std::map<std::string, int>& index, const std::string& symbol) {
    auto [it, fresh] = index.emplace(symbol, static_cast<int>(names.size()));
    if (fresh) names.push_back(symbol);
    return it->second;
}

} // namespace

Cx cdiv(Cx a, Cx b) {
    const double c = b.real(), d = b.imag();
    if (std::isnan(c) || std::isnan(d) || (c == 0.0 && d == 0.0)) return {kNaN, kNaN};
    // (a + ib)/(c + id): divide through by the larger part of the divisor.
    if (std::fabs(c) >= std::fabs(d)) {
        const double r = d / c, den = c + d * r;
        return {(a.real() + a.imag() * r) / den, (a.imag() - a.real() * r) / den};
    }
    const double r = c / d, den = d + c * r;
    return {(a.real() * r + a.imag()) / den, (a.imag() * r - a.real()) / den};
}

double omegaOf(double f) {
    if (!(f > 0.0)) f = 50.0;
    return 2.0 * kPi * f;
}

namespace {
// Symbol lookups are rare (binding, targets); a linear scan keeps the plan a
// plain aggregate.
int slotIn(const std::vector<std::string>& names, const std::string& symbol) {
    for (size_t i = 0; i < names.size(); ++i)
        if (names[i] == symbol) return static_cast<int>(i);
    return -1;
}
} // namespace

int ForwardPlan::inputSlot(const std::string& symbol) const {
    return slotIn(inputs, symbol);
}
int ForwardPlan::outputSlot(const std::string& symbol) const {
    return slotIn(outputs, symbol);
}

void ForwardWork::prepare(const ForwardPlan& plan) {
    z.assign(plan.items.size(), Cx());
    u.assign(plan.items.size(), Cx());
    i.assign(plan.items.size(), Cx());
    out.assign(plan.outputs.size(), kNaN);
}

ForwardPlan compilePlan(const CNodePtr& root, bool isAc, const Values* values) {
    ForwardPlan plan;
    plan.isAc = isAc;
    std::map<std::string, int> inIdx, outIdx;
    auto in = [&](const std::string& s) { return addSlot(plan.inputs, inIdx, s); };
    auto out = [&](const std::string& s) { return addSlot(plan.outputs, outIdx, s); };

    // Pre-order with parent links; children ranges follow by counting.
    std::vector<int> parent;
    std::vector<std::pair<CNode*, int>> stack{{root.get(), -1}};
    while (!stack.empty()) {
        auto [n, par] = stack.back();
        stack.pop_back();
        ForwardPlan::Item item;
        item.node = n;
        item.k = n->group ? (n->k == "P" ? 'P' : 'S') : (n->k.empty() ? 'R' : n->k[0]);
        const int self = static_cast<int>(plan.items.size());
        plan.items.push_back(item);
        parent.push_back(par);
        for (auto it = n->ch.rbegin(); it != n->ch.rend(); ++it)
            stack.push_back({it->get(), self});
    }
    const int count = static_cast<int>(plan.items.size());
    std::vector<int> fill(count + 1, 0);
    for (int i = 1; i < count; ++i)
        ++fill[parent[i] + 1];
    for (int i = 0; i < count; ++i)
        fill[i + 1] += fill[i];
    plan.kids.assign(count > 0 ? count - 1 : 0, 0);
    for (int i = 0; i < count; ++i) {
        plan.items[i].kidsBegin = fill[i];
        plan.items[i].kidsEnd = fill[i];
    }
    for (int i = 1; i < count; ++i)
        plan.kids[plan.items[parent[i]].kidsEnd++] = i;

    for (int idx = 0; idx < count; ++idx) {
        ForwardPlan::Item& it = plan.items[idx];
        const CNode& n = *it.node;
        const bool isRoot = idx == 0;
        if (!n.group && (it.k == 'R' || it.k == 'L' || it.k == 'C')) {
            it.value = in(n.name);
            if (it.k == 'L' && (hasOwnResistance(n) != OwnNone || (values && values->count("R_" + n.name))))
                it.ownR = in("R_" + n.name);
        }
        if (isRoot) continue;
        it.outU = out(voltageSymbol(n));
        it.outI = out(currentSymbol(n));
        it.outP = out(powerSymbol(n));
        if (n.group) {
            it.outR = out(nodeSymbol(n, "R"));
            if (isAc) {
                it.outZ = out(nodeSymbol(n, "Z"));
                it.outX = out(nodeSymbol(n, "X"));
            }
        } else if (isAc && (it.k == 'L' || it.k == 'C')) {
            it.outX = out("X_" + n.name);
            if (it.ownR >= 0) it.outZ = out("Z_" + n.name);
        }
    }
    plan.inU = in("U");
    plan.inF = in("f");
    plan.oZ = out("Z");
    plan.oI = out("I");
    plan.oU = out("U");
    plan.oCos = out("cosphi");
    plan.oP = out("P");
    plan.oPtot = out("P_tot");
    plan.oRtot = out("R_tot");
    plan.oXtot = out("X_tot");
    if (isAc) {
        plan.oPhi = out("phi");
        plan.oQ = out("Q");
        plan.oS = out("S");
        plan.oIw = out("Iw");
        plan.oIb = out("Ib");
    }
    return plan;
}

void runPlan(const ForwardPlan& plan, const double* in, ForwardWork& w) {
    const int count = static_cast<int>(plan.items.size());
    const double omega = omegaOf(plan.inF >= 0 ? in[plan.inF] : kNaN);
    const Cx one(1.0, 0.0);

    for (int idx = count - 1; idx >= 0; --idx) {
        const ForwardPlan::Item& it = plan.items[idx];
        Cx z;
        switch (it.k) {
        case 'S':
            // Series: z = Σ zₖ
            for (int k = it.kidsBegin; k < it.kidsEnd; ++k)
                z += w.z[plan.kids[k]];
            break;
        case 'P': {
            // Parallel: z = 1 / Σ (1/zₖ)
            Cx y;
            for (int k = it.kidsBegin; k < it.kidsEnd; ++k)
                y += cdiv(one, w.z[plan.kids[k]]);
            z = cdiv(one, y);
            break;
        }
        case 'R':
            z = Cx(in[it.value], 0.0);
            break;
        case 'L':
            z = Cx(it.ownR >= 0 ? in[it.ownR] : 0.0, omega * in[it.value]);
            break;
        case 'C':
            z = Cx(0.0, -1.0 / (omega * in[it.value]));
            break;
        case 'V':
            z = Cx(std::numeric_limits<double>::infinity(), 0.0);
            break; // draws no current
        default:
            z = Cx();
            break; // an ammeter: no resistance
        }
        w.z[idx] = z;
    }

    // I = U / Z, with U on the real axis.
    const double U = in[plan.inU];
    const Cx Zt = w.z[0];
    const Cx I = cdiv(Cx(U, 0.0), Zt);
    w.u[0] = Cx(U, 0.0);
    w.i[0] = I;
    for (int idx = 0; idx < count; ++idx) {
        const ForwardPlan::Item& it = plan.items[idx];
        if (it.k == 'S') {
            // Series: one current, uₖ = zₖ·I
            for (int k = it.kidsBegin; k < it.kidsEnd; ++k) {
                const int c = plan.kids[k];
                w.i[c] = w.i[idx];
                w.u[c] = cmul(w.z[c], w.i[idx]);
            }
        } else if (it.k == 'P') {
            // Parallel: one voltage, iₖ = U / zₖ
            for (int k = it.kidsBegin; k < it.kidsEnd; ++k) {
                const int c = plan.kids[k];
                w.u[c] = w.u[idx];
                w.i[c] = cdiv(w.u[idx], w.z[c]);
            }
        }
    }

    // Outputs with slot -1 have been left out of a lean plan.
    double* o = w.out.data();
    const double Z = mag(Zt);
    const double Imag = mag(I);
    const double cosphi = Zt.real() / Z;
    if (plan.oZ >= 0) o[plan.oZ] = Z;
    if (plan.oI >= 0) o[plan.oI] = Imag;
    if (plan.oU >= 0) o[plan.oU] = U;
    if (plan.oCos >= 0) o[plan.oCos] = cosphi;
    if (plan.oP >= 0) o[plan.oP] = U * Imag * cosphi;
    if (plan.oPtot >= 0) o[plan.oPtot] = plan.isAc ? U * Imag * cosphi : std::abs(U) * Imag;
    if (plan.oRtot >= 0) o[plan.oRtot] = Zt.real();
    if (plan.oXtot >= 0) o[plan.oXtot] = Zt.imag();
    if (plan.oPhi >= 0 || plan.oQ >= 0 || plan.oS >= 0 || plan.oIw >= 0 || plan.oIb >= 0) {
        // φ shown positive; the side is told by the sign of X_tot.
        const double phi = std::acos(std::fmin(1.0, std::fmax(-1.0, cosphi)));
        if (plan.oPhi >= 0) o[plan.oPhi] = phi / kDeg;
        if (plan.oQ >= 0) o[plan.oQ] = U * Imag * std::sin(phi);
        if (plan.oS >= 0) o[plan.oS] = U * Imag;
        if (plan.oIw >= 0) o[plan.oIw] = Imag * cosphi;
        if (plan.oIb >= 0) o[plan.oIb] = Imag * std::sin(Zt.imag() < 0.0 ? -phi : phi);
    }

    for (int idx = 1; idx < count; ++idx) {
        const ForwardPlan::Item& it = plan.items[idx];
        const Cx z = w.z[idx];
        if (it.outU >= 0) o[it.outU] = mag(w.u[idx]);
        if (it.outI >= 0) o[it.outI] = mag(w.i[idx]);
        if (it.outP >= 0) {
            const double i = mag(w.i[idx]);
            o[it.outP] = plan.isAc ? i * i * z.real() : mag(w.u[idx]) * i;
        }
        if (it.outR >= 0) o[it.outR] = z.real();
        if (it.outZ >= 0) o[it.outZ] = mag(z);
        // A group's reactance keeps its sign; a leaf's is a magnitude.
        if (it.outX >= 0) o[it.outX] = it.k == 'S' || it.k == 'P' ? z.imag() : std::fabs(z.imag());
    }
}

ForwardPlan leanPlan(const ForwardPlan& plan, const std::vector<int>& keep) {
    ForwardPlan lean = plan;
    auto trim = [&](int& slot) {
        if (slot >= 0 && std::find(keep.begin(), keep.end(), slot) == keep.end()) slot = -1;
    };
    for (ForwardPlan::Item& it : lean.items)
        for (int* slot : {&it.outU, &it.outI, &it.outP, &it.outR, &it.outX, &it.outZ})
            trim(*slot);
    for (int* slot : {&lean.oZ, &lean.oI, &lean.oU, &lean.oCos, &lean.oP, &lean.oPtot, &lean.oRtot,
                      &lean.oXtot, &lean.oPhi, &lean.oQ, &lean.oS, &lean.oIw, &lean.oIb})
        trim(*slot);
    return lean;
}

namespace {

// Binds a plan's inputs from a values map, in plan order so that a missing
// component is named before a missing source voltage.
std::vector<double> bindInputs(const ForwardPlan& plan, const Values& values) {
    std::vector<double> in(plan.inputs.size(), kNaN);
    for (size_t s = 0; s < plan.inputs.size(); ++s) {
        const std::string& sym = plan.inputs[s];
        auto it = values.find(sym);
        if (it != values.end()) {
            in[s] = it->second;
            continue;
        }
        if (static_cast<int>(s) == plan.inF) continue;
        if (sym.rfind("R_", 0) == 0) {
            // A coil's own resistance typed as a number needs no entry of its own.
            double r;
            for (const ForwardPlan::Item& item : plan.items)
                if (item.ownR == static_cast<int>(s) && hasOwnResistance(*item.node, &r) == OwnKnown) {
                    in[s] = r;
                    break;
                }
            if (!std::isnan(in[s])) continue;
        }
        throw std::runtime_error("mangler " + sym);
    }
    return in;
}

} // namespace

namespace {

// One pass in the map form, with each node's impedance cached in its `z`.
ForwardPlan runOnce(const CNodePtr& root, const Values& values, bool isAc, ForwardWork& w) {
    ForwardPlan plan = compilePlan(root, isAc, &values);
    const std::vector<double> in = bindInputs(plan, values);
    w.prepare(plan);
    runPlan(plan, in.data(), w);
    for (size_t idx = 0; idx < plan.items.size(); ++idx)
        plan.items[idx].node->z = w.z[idx];
    return plan;
}

} // namespace

Values forward(const CNodePtr& root, const Values& values, bool isAc) {
    ForwardWork w;
    const ForwardPlan plan = runOnce(root, values, isAc, w);
    Values out;
    for (size_t s = 0; s < plan.outputs.size(); ++s)
        out[plan.outputs[s]] = w.out[s];
    return out;
}

Cx impedance(const CNodePtr& node, const Values& values, bool isAc) {
    // The subtree's plan needs a source voltage slot; any value will do.
    Values v = values;
    v.emplace("U", 1.0);
    ForwardWork w;
    runOnce(node, v, isAc, w);
    return w.z[0];
}

std::map<std::string, NodePhasor> phasors(const CNodePtr& root, const Values& values, bool isAc) {
    ForwardWork w;
    const ForwardPlan plan = runOnce(root, values, isAc, w);
    std::map<std::string, NodePhasor> out;
    for (size_t idx = 0; idx < plan.items.size(); ++idx)
        out[plan.items[idx].node->id] = {w.z[idx], w.u[idx], w.i[idx]};
    return out;
}

} // namespace fl
