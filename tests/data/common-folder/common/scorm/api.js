var api = parent.API_1484_11;
api.Initialize("");
api.SetValue("cmi." + "completion_status", "completed");
api.Terminate("");
