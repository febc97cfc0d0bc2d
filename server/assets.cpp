// The teacher's pages' one stylesheet and one script, served as files so
// that the content security policy can forbid every inline script. The
// script only adds comfort: every form works without it.
#include <string>

namespace server {

std::string siteCss() {
    return R"css(
:root { --bg:#f4f6f9; --card:#fff; --text:#1c2430; --muted:#5b6675; --line:#d9dee6; --accent:#1f5fbf;
  --accent-text:#fff; --bad:#b3261e; --bad-bg:#fdecea; --ok:#1a7f37; --ok-bg:#e8f5ec; --chip:#eef2f8; }
@media (prefers-color-scheme: dark) {
  :root { --bg:#14181f; --card:#1d232c; --text:#e6e9ee; --muted:#9aa4b2; --line:#323b47; --accent:#5b9bff;
    --accent-text:#0b1320; --bad:#ff8a80; --bad-bg:#3a1d1b; --ok:#6fd08c; --ok-bg:#17301f; --chip:#27303c; }
}
* { box-sizing: border-box; }
body { margin:0; background:var(--bg); color:var(--text); font:16px/1.5 system-ui, "Segoe UI", Roboto, "Noto Sans",
  "DejaVu Sans", sans-serif; }
a { color:var(--accent); }
.bar { display:flex; align-items:center; justify-content:space-between; gap:12px; padding:10px 16px;
  background:var(--card); border-bottom:1px solid var(--line); }
.brand { font-weight:700; text-decoration:none; color:var(--text); white-space:nowrap; }
.brand span { font-weight:500; color:var(--muted); margin-left:4px; }
.who { display:flex; align-items:center; gap:10px; color:var(--muted); font-size:14px; }
main { max-width:880px; margin:0 auto; padding:16px; }
h1 { font-size:26px; margin:8px 0 16px; }
h2 { font-size:19px; margin:0 0 10px; }
.card { background:var(--card); border:1px solid var(--line); border-radius:10px; padding:16px 18px; margin:0 0 16px; }
.narrow { max-width:420px; margin:32px auto; }
.grid { display:grid; grid-template-columns:repeat(auto-fill, minmax(230px, 1fr)); gap:12px; margin-bottom:16px; }
.tile { display:block; text-decoration:none; color:var(--text); margin:0; }
.tile:hover { border-color:var(--accent); }
.code { font:600 20px/1.2 ui-monospace, "DejaVu Sans Mono", monospace; letter-spacing:2px; color:var(--accent); margin:4px 0; }
.code.big { font-size:34px; }
.codecard p:first-child { margin:0; color:var(--muted); }
.hint { color:var(--muted); font-size:14px; }
.crumbs { font-size:14px; color:var(--muted); }
label { display:block; margin:0 0 12px; font-weight:600; }
label .hint { font-weight:400; }
input[type=email], input[type=password], input[type=date], input:not([type]), textarea, select {
  display:block; width:100%; margin-top:4px; padding:9px 10px; font:inherit; color:var(--text); background:var(--bg);
  border:1px solid var(--line); border-radius:7px; }
textarea.mono { font:14px/1.4 ui-monospace, "DejaVu Sans Mono", monospace; }
input:focus, textarea:focus, select:focus, button:focus-visible { outline:2px solid var(--accent); outline-offset:1px; }
button { font:inherit; padding:9px 16px; border-radius:7px; border:1px solid var(--line); background:var(--chip);
  color:var(--text); cursor:pointer; min-height:40px; }
button.primary { background:var(--accent); border-color:var(--accent); color:var(--accent-text); font-weight:600; }
button.danger { background:transparent; border-color:var(--bad); color:var(--bad); }
button.small { padding:4px 10px; min-height:32px; font-size:14px; }
button.link { border:0; background:none; color:var(--accent); padding:0; min-height:0; text-decoration:underline; }
.row { display:flex; flex-wrap:wrap; gap:10px; align-items:flex-end; }
.row label { flex:1 1 240px; margin:0; }
.msg { padding:10px 12px; border-radius:7px; margin:0 0 12px; }
.msg.bad { background:var(--bad-bg); color:var(--bad); }
.msg.ok { background:var(--ok-bg); color:var(--ok); }
fieldset { border:0; padding:0; margin:0 0 14px; }
legend { font-weight:700; margin-bottom:6px; }
.choice { display:flex; gap:10px; align-items:flex-start; font-weight:400; margin:0 0 8px; }
.choice input { margin-top:5px; width:18px; height:18px; flex:none; }
.topics { display:grid; grid-template-columns:repeat(auto-fill, minmax(330px, 1fr)); gap:0 16px; }
details summary { cursor:pointer; font-weight:600; color:var(--accent); margin:8px 0 12px; }
ul.tasks { list-style:none; padding:0; margin:0 0 8px; }
ul.tasks li { display:flex; justify-content:space-between; align-items:center; gap:12px; padding:10px 0;
  border-bottom:1px solid var(--line); }
ul.tasks li > div { display:flex; flex-direction:column; min-width:0; }
ul.tasks .title { font-weight:600; }
table { width:100%; border-collapse:collapse; }
th, td { text-align:left; padding:8px 6px; border-bottom:1px solid var(--line); vertical-align:top; }
th { font-size:14px; color:var(--muted); }
.badge { display:inline-block; font-size:12px; font-weight:700; padding:1px 7px; border-radius:9px;
  background:var(--ok-bg); color:var(--ok); margin-right:4px; }
tr.q .badge { background:var(--chip); color:var(--accent); }
.level { font-size:13px; font-weight:700; padding:2px 8px; border-radius:9px; background:var(--chip); }
.level.svag { background:var(--bad-bg); color:var(--bad); }
.level.god { background:var(--ok-bg); color:var(--ok); }
.dangerzone { border-color:var(--bad); }
@media (max-width:560px) {
  main { padding:10px; }
  h1 { font-size:22px; }
  .code.big { font-size:28px; }
  .who span { display:none; }
  .topics { grid-template-columns:1fr; }
  table thead { display:none; }
  table tr { display:block; border-bottom:1px solid var(--line); padding:6px 0; }
  table td { display:block; border:0; padding:2px 0; }
  table td::before { content:attr(data-label) ": "; color:var(--muted); font-size:13px; }
}
)css";
}

std::string siteJs() {
    return R"js(
document.addEventListener('click', function (e) {
  var b = e.target.closest('[data-confirm]');
  if (b && !window.confirm(b.getAttribute('data-confirm'))) e.preventDefault();
});
document.addEventListener('change', function (e) {
  var t = e.target;
  var form = t.form;
  if (!form) return;
  if (t.name === 'profile' && t.value !== 'egen') {
    var off = (t.getAttribute('data-off') || '').split(' ');
    form.querySelectorAll('input[name=off]').forEach(function (c) { c.checked = off.indexOf(c.value) >= 0; });
  } else if (t.name === 'off') {
    var own = form.querySelector('input[name=profile][value=egen]');
    if (own) own.checked = true;
  }
});
)js";
}

} // namespace server
