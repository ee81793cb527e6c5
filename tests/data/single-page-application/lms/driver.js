var api = window.parent.API_1484_11;
function start() { api.Initialize(""); }
function pass(score) {
  api.SetValue("cmi.score.scaled", score);
  api.SetValue("cmi.success_status", "passed");
  api.SetValue("cmi.completion_status", "completed");
}
function end() { api.Terminate(""); }
