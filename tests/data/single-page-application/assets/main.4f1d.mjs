import lessons from "./lessons.77aa.mjs";
addEventListener("hashchange", () => lessons.show(location.hash));
start();
