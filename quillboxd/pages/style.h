#pragma once

#include <string_view>

namespace quillboxd::pages {

/// What these pages add to the style of every page.
inline constexpr std::string_view style = R"css(
:root { --ground: #fff; --quiet: #5f6368; --band: #f3f5f8; --good: #146c2e; --bad: #b3261e; }
@media (prefers-color-scheme: dark) {
  :root { --ground: #16181c; --quiet: #a6acb5; --band: #20242a; --good: #7bd88f; --bad: #ff8f85; }
}
body { max-width: 72rem; margin: 0 auto; background: var(--ground); }
header { display: flex; flex-wrap: wrap; gap: .25rem 1.25rem; align-items: baseline; padding: 1rem 0;
  border-bottom: 1px solid var(--line); }
header nav, .trail { display: flex; flex-wrap: wrap; gap: .25rem 1rem; }
.trail { gap: .25rem .5rem; overflow-wrap: anywhere; }
.brand { font-weight: 700; }
.skip:not(:focus) { position: absolute; width: 1px; height: 1px; overflow: hidden; clip-path: inset(50%); }
h2 { font-size: 1.15rem; margin: 2.5rem 0 .25rem; }
.scroll { overflow-x: auto; }
table { font-size: .9rem; }
caption { text-align: left; color: var(--quiet); padding: .25rem 0; }
th, td { padding: .4rem 1rem .4rem 0; vertical-align: middle; }
thead th { border-bottom-width: 2px; white-space: nowrap; }
tbody th { font-weight: 500; }
tbody tr:nth-child(even) { background: var(--band); }
td:first-child { overflow-wrap: normal; }
.number { text-align: right; font-variant-numeric: tabular-nums; white-space: nowrap; }
.any, .wide { overflow-wrap: anywhere; min-width: 6rem; }
.wide { min-width: 14rem; }
time { white-space: nowrap; }
.good { color: var(--good); }
.bad { color: var(--bad); font-weight: 600; }
.quiet, footer { color: var(--quiet); }
.item { display: inline-flex; align-items: center; gap: .75rem; min-height: 3rem; }
.item span { text-decoration: underline; }
.item img { width: 3rem; height: 3rem; object-fit: cover; border-radius: .25rem; background: var(--band); }
)css";

}  // namespace quillboxd::pages
