var api = parent.API_1484_11;
onload = function () { api.Initialize(""); };
onunload = function () {
  api.SetValue("cmi.completion_status", "completed");
  api.Terminate("");
};
